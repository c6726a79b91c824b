#pragma once
// Why a command ends early: thrown where it is noticed, caught once in main.

#include <QString>

/// Exit codes of the program; scripts depend on them.
enum class Exit {
    Ok = 0,
    Refused = 1,      ///< the machine said no, or what was asked did not come about
    Usage = 2,        ///< the command line, or a file named on it, is wrong; the machine was not touched
    NoConnection = 3, ///< no machine there, or it hung up
    TimeOut = 4,      ///< connected, but no answer in time
};

struct Failure {
    Exit code;
    QString text; ///< what went wrong and what to do about it, for a person
};
