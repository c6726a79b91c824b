#!/bin/bash
# Includes run down the folder table only. Usage: include_order.sh SOURCE_FOLDER
# The table, lowest first: a folder may include itself and what stands before it.
order="platform frame events links printdata engine material remote keyboard forms"
cd "${1:?source folder}" || exit 2

# Lines "file:line:folder" of every #include "folder/..." below the given folders.
includes() {
    grep -rnoE --include='*.cpp' --include='*.h' '^[[:space:]]*#[[:space:]]*include[[:space:]]*"[^"/]+/' "$@" 2>/dev/null |
        sed -E 's/^([^:]+:[0-9]+):.*"([^"\/]+)\/$/\1 \2/'
}

wrong=0
refuse() { echo "$1: $2"; wrong=1; }
while read -r where target; do
    own=${where#src/}
    [[ $own == */* ]] && own=${own%%/*} || own="" # the exported function, directly in src/, stands above all
    allowed=" ${order%%"${own:-none}"*}$own "
    [ "$own" = keyboard ] && allowed=" keyboard "
    [[ $allowed == *" $target "* ]] || refuse "$where" "${own:-the entry} must not include $target"
done < <(includes src)
while read -r where target; do
    [[ " $order src .. " == *" $target "* ]] && refuse "$where" "must not include src/ ($target)"
done < <(includes simulator client postrel tools)
exit $wrong
