#pragma once
// Why no mail went out, or not to everybody: thrown where it is noticed, caught once in main.

#include <QString>

/// Exit codes of the tool; scripts depend on them.
enum class Exit {
    Ok = 0,
    Usage = 1,        ///< the command line is wrong
    Settings = 2,     ///< the settings or the text's file cannot be read, or something is not set in them
    NoConnection = 3, ///< no mail server there, or it hung up or fell silent
    Tls = 4,          ///< its certificate is not trusted, or TLS does not come about
    Login = 5,        ///< user or password refused
    Refused = 6,      ///< sender, a recipient or the mail refused
};

struct Failure {
    Exit code;
    QString text; ///< what went wrong and what to do about it, for a person
};
