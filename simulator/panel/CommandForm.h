#pragma once
// The arguments of a command, read from the text that explains them, as inputs of a form.
//
//     "front|inkbox open|close"              two choices
//     "HEAD structure|support VALUE"         a number, a choice, a number
//     "plug FOLDER [NAME] | unplug [NAME]"   two forms
//     "[FILE]"                               a text that may be left out

#include <QString>
#include <QStringList>
#include <vector>

struct CommandField {
    enum Kind { Fixed, Choice, Whole, Decimal, Text };
    Kind kind = Text;
    QString name;      ///< as the text has it, without brackets
    QStringList words; ///< of a choice; the one fixed word
    bool optional = false;
    int low = 0, high = 0; ///< of a number
};

using CommandForm = std::vector<CommandField>;

/// One form for each alternative; a command without arguments has one empty form.
std::vector<CommandForm> commandForms(const QString &arguments);
