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
complete -c widgethost -l extension -rF -d "Extension to use instead of the installed ones"
complete -c widgethost -l home -xa "(__fish_complete_directories)" -d "Folder to use as the user's home"
complete -c widgethost -l unconfined -d "Run extensions without confinement"
complete -c widgethost -s h -l help -d "Print help"
complete -c widgethost -n "not __fish_seen_subcommand_from $commands" -l version -d "Print the version"

function __widgethost_command -a name description -V commands
    complete -c widgethost -n "not __fish_seen_subcommand_from $commands" -a $name -d $description
end
__widgethost_command desktop "Show the placed widgets on the desktop"
__widgethost_command host "Keep the placed widgets up to date without windows"
__widgethost_command describe "List the widgets and their parameters"
__widgethost_command options "List the choices of a widget's parameter"
__widgethost_command render "Draw one widget"
__widgethost_command gallery "Draw every widget in every family"
__widgethost_command add "Place a widget on the desktop"
__widgethost_command list "List the placed widgets"
__widgethost_command edit "Change the settings of a placed widget"
__widgethost_command move "Move a placed widget"
__widgethost_command remove "Remove a widget from the desktop"
__widgethost_command lock "Keep placed widgets from being dragged"
__widgethost_command unlock "Allow placed widgets to be dragged"
__widgethost_command mode "Choose how placed widgets use colours"
__widgethost_command reload "Reload the widgets of the running host"
__widgethost_command explain "Show when a placed widget reloads, and what failed"
__widgethost_command doctor "Find problems on this machine"
functions -e __widgethost_command

complete -c widgethost -n "__fish_seen_subcommand_from options render add reload" -a "(__widgethost_kinds)" -d Kind
complete -c widgethost -n "__fish_seen_subcommand_from edit move remove explain" -a "(__widgethost_ids)" -d Id
complete -c widgethost -n "__fish_seen_subcommand_from mode" -a "fullColor tinted vibrant" -d Mode
complete -c widgethost -n "__fish_seen_subcommand_from describe options list doctor" -l json -d "Print JSON"
complete -c widgethost -n "__fish_seen_subcommand_from options" -l matching -x -d "Only choices that contain this text"
complete -c widgethost -n "__fish_seen_subcommand_from desktop" -l background -d "Never open the gallery"
complete -c widgethost -n "__fish_seen_subcommand_from render add" -l family -xa "small medium large extraLarge" -d "The size"
complete -c widgethost -n "__fish_seen_subcommand_from render add edit" -l set -x -d "A choice, NAME=VALUE"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l request -xa "timeline snapshot placeholder" -d "What to ask for"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l preview -x -d "A design-time preview"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l mode -xa "fullColor tinted vibrant" -d "How to use colours"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l appearance -xa "light dark" -d "The colour scheme"
complete -c widgethost -n "__fish_seen_subcommand_from gallery" -l appearance -xa "light dark both" -d "The colour schemes"
complete -c widgethost -n "__fish_seen_subcommand_from render gallery" -l contrast -xa "normal high" -d "How far all stands out"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l accent -x -d "The colour of the tinted mode"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l scale -x -d "Device pixels per point"
complete -c widgethost -n "__fish_seen_subcommand_from render" -l format -xa "png svg pdf tree frames" -d "What to write"
complete -c widgethost -n "__fish_seen_subcommand_from render" -s o -l output -rF -d "File to write"
complete -c widgethost -n "__fish_seen_subcommand_from gallery" -s o -l output -xa "(__fish_complete_directories)" -d "Folder to write to"
complete -c widgethost -n "__fish_seen_subcommand_from add move" -l output -x -d "The screen"
complete -c widgethost -n "__fish_seen_subcommand_from add" -l at -x -d "Position of the upper left corner, X,Y"
