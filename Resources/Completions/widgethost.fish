# Completion of widgethost's command line for fish.

set -l commands desktop host describe options render gallery add list edit move remove lock unlock mode reload explain doctor

function __widgethost_kinds
    # With the extension and the home that were named before.
    set -l words (commandline -opc)
    set -l choice
    for i in (seq (count $words))
        if contains -- $words[$i] --extension --home
            set -a choice $words[$i] $words[(math $i + 1)]
        end
    end
    widgethost $choice describe --json 2>/dev/null | string match -ar '"kind":"[^"]*"' | string replace -r '.*:"(.*)"' '$1'
end

function __widgethost_ids
    widgethost list --json 2>/dev/null | string match -ar '"id":\d+' | string replace '"id":' ''
end

complete -c widgethost -f
complete -c widgethost -l extension -rF -d "An extension to use instead of the installed ones"
complete -c widgethost -l home -xa "(__fish_complete_directories)" -d "The folder taken for the user's home"
complete -c widgethost -l unconfined -d "Let the extension do what the user may"
complete -c widgethost -s h -l help -d "Print help"
complete -c widgethost -n "not __fish_seen_subcommand_from $commands" -l version -d "Print the version"

function __widgethost_command -a name description -V commands
    complete -c widgethost -n "not __fish_seen_subcommand_from $commands" -a $name -d $description
end
__widgethost_command desktop "Show the placed widgets on the desktop"
__widgethost_command host "Keep the placed widgets up to date without windows"
__widgethost_command describe "Say what widgets there are and what they offer"
__widgethost_command options "List the choices of a widget's parameter"
__widgethost_command render "Draw one widget"
__widgethost_command gallery "Draw every widget in every family"
__widgethost_command add "Place a widget on the desktop"
__widgethost_command list "List the placed widgets"
__widgethost_command edit "Change what a placed widget is set to"
__widgethost_command move "Put a placed widget somewhere else"
__widgethost_command remove "Take a widget off the desktop"
__widgethost_command lock "Keep placed widgets where they are"
__widgethost_command unlock "Let placed widgets be dragged"
__widgethost_command mode "Choose how placed widgets use colours"
__widgethost_command reload "Have the running host ask for its widgets at once"
__widgethost_command explain "Say how a placed widget is doing"
__widgethost_command doctor "Say what stands in the way of widgets on this machine"
functions -e __widgethost_command

complete -c widgethost -n "__fish_seen_subcommand_from options render add reload" -a "(__widgethost_kinds)" -d Kind
complete -c widgethost -n "__fish_seen_subcommand_from edit move remove explain" -a "(__widgethost_ids)" -d Id
complete -c widgethost -n "__fish_seen_subcommand_from mode" -a "fullColor tinted vibrant" -d Mode
complete -c widgethost -n "__fish_seen_subcommand_from describe options list doctor" -l json -d "Print JSON"
complete -c widgethost -n "__fish_seen_subcommand_from options" -l matching -x -d "Only choices that contain this text"
complete -c widgethost -n "__fish_seen_subcommand_from desktop" -l background -d "Keep quiet where no widget is placed"
complete -c widgethost -n "__fish_seen_subcommand_from render add" -l family -xa "small medium large extraLarge" -d "The size"
complete -c widgethost -n "__fish_seen_subcommand_from render add edit" -l set -x -d "A choice, NAME=VALUE"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l request -xa "timeline snapshot placeholder" -d "What is asked for"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l preview -x -d "A design-time preview"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l mode -xa "fullColor tinted vibrant" -d "How colours are used"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l appearance -xa "light dark" -d "The colour scheme"
complete -c widgethost -n "__fish_seen_subcommand_from gallery" -l appearance -xa "light dark both" -d "The colour schemes"
complete -c widgethost -n "__fish_seen_subcommand_from render gallery" -l contrast -xa "normal high" -d "How far all stands out"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l accent -x -d "The colour of the tinted mode"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l scale -x -d "Device pixels a point"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l format -xa "png svg pdf tree frames" -d "What is written"
complete -c widgethost -n "__fish_seen_subcommand_from render" -s o -l output -rF -d "The file to write"
complete -c widgethost -n "__fish_seen_subcommand_from gallery" -s o -l output -xa "(__fish_complete_directories)" -d "The folder to write"
complete -c widgethost -n "__fish_seen_subcommand_from add move" -l output -x -d "The screen"
complete -c widgethost -n "__fish_seen_subcommand_from add" -l at -x -d "Where the upper left corner lies, X,Y"
