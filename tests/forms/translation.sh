#!/bin/bash
# Every text that the program shows has its English, with the same place holders.
# Usage: translation.sh TRANSLATION.ts SOURCE_FOLDER LUPDATE
set -u
ts=${1:?translation} sources=${2:?source folder} lupdate=${3:?lupdate}

perl -CSDA -0777 -ne '
    sub holders { join " ", sort $_[0] =~ /%\d+/g }
    my ($count, $bad) = (0, 0);
    while (m{<source>(.*?)</source>.*?<translation(.*?)>(.*?)</translation>}gs) {
        my ($text, $kind, $english) = ($1, $2, $3);
        ++$count;
        next if $kind eq "" && $english =~ /\S/ && $english !~ /\p{Han}/ && holders($text) eq holders($english);
        print "not translated: $text\n";
        ++$bad;
    }
    print "$count texts\n";
    exit($bad || $count < 100 ? 1 : 0)' "$ts" || exit 1

# lupdate on a copy finds nothing new and nothing that is no longer there
copy=$(mktemp --suffix=.ts)
trap 'rm -f "$copy"' EXIT
cp "$ts" "$copy"
"$lupdate" -silent -locations none -no-ui-lines -no-obsolete -source-language zh_CN -target-language en \
    "$sources" -ts "$copy" || exit 1
diff "$ts" "$copy"
