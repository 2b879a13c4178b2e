// ICU_NAME(function): the text under which ICU's libraries export a function.
//
// ICU's headers define each function's name as a macro that adds the version; quoting it needs one more expansion.
#pragma once

#define ICU_QUOTED(name) #name
#define ICU_NAME(function) ICU_QUOTED(function)
