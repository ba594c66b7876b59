#pragma once

#include <QString>

/** Thrown to end a command: one line for the error stream, and the program's exit status. */
struct Failure
{
    QString message;
    int status = 1;
};

/** The command was called wrongly. */
struct UsageFailure : Failure
{
    explicit UsageFailure(const QString& text)
        : Failure {text, 2}
    {
    }
};
