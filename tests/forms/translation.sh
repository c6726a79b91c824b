#!/bin/bash
# Every text that the program shows stands in every language, with its place holders, breaks, tags and blanks.
# Usage: translation.sh FOLDER_OF_TRANSLATIONS UPDATE_SCRIPT
set -u
folder=${1:?folder of translations} update=${2:?update script}

perl -CSDA -Mutf8 - "$folder" <<'PERL' || exit 1
my ($folder, $bad, %english) = (shift, 0);
my %letters = (Chinese => qr/\p{Han}/, Turkish => qr/[ğışİ]/, French => qr/[éèà]/, Korean => qr/\p{Hangul}/);
sub fail { print "@_\n"; ++$bad }
# what a text must keep, whatever its language
sub frame {
    my $text = shift;
    my ($before) = $text =~ /^(\s*)/;
    my ($after) = $text =~ /(\s*)$/;
    join "|", sort($text =~ /%[\dnL]+|&lt;\/?[a-z]+|&quot;\w+&quot;\s*:|\n/g), "$before.$after";
}
sub wrong {
    my ($language, $text, $kind, $told) = @_;
    $told =~ s/\s$// if $text =~ /：$/; # the wide colon holds its blank
    return "not translated" if $kind ne "" || $told !~ /\S/;
    return "differs" if frame($text) ne frame($told);
    return $text eq $told ? "" : "not its source" if $language eq "Chinese";
    return $told =~ /\p{Han}/ || ($language ne "Korean" && $told =~ /\p{Hangul}/) ? "wrong letters" : "";
}
for my $language (qw(Chinese English Turkish French Korean)) {
    open my $file, "<", "$folder/$language.ts" or fail("no $language") and next;
    my $all = join "", <$file>;
    my ($count, $own, $same) = (0, 0, 0);
    for my $message ($all =~ m{<message.*?>(.*?)</message>}gs) {
        my ($text, $kind, $told) = $message =~ m{<source>(.*?)</source>.*<translation(.*?)>(.*)</translation>}s;
        my $fault = wrong($language, $text, $kind, $told);
        fail("$language: $fault: $text -> $told") if $fault;
        ++$count;
        $english{$text} = $told if $language eq "English";
        ++$same if $told eq ($english{$text} // "");
        ++$own if $language ne "English" && $told =~ $letters{$language};
    }
    fail("$language: only $count texts") if $count < 180;
    next if $language eq "English";
    fail("$language: only $own of $count texts in its letters") if $own < $count * ($language =~ /n$/ ? 0.9 : 0.3);
    fail("$language: $same of $count texts are English") if $same > $count * 0.1;
}
exit($bad ? 1 : 0);
PERL

# brought up to date, a copy stays what it was: nothing is new, nothing has gone
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
cp "$folder"/*.ts "$copy"
"$update" "$copy" && diff "$folder" "$copy" -x '[!A-Z]*' -x 'CMake*' -x '*.md'
