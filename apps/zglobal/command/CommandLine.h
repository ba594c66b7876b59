#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

/** What the program can be told to do, as data: parsing, help, manual page and completion run off
 *  it. */
struct Command
{
    static constexpr int anyNumber = -1;

    QString name;
    QString arguments;    ///< as the help shows them, such as "ID"
    QStringList choices;  ///< what the first argument may be; empty when that is no fixed list
    int fewest = 0;       ///< how many arguments there must be ...
    int most = 0;         ///< ... and may be, or anyNumber
    QString summary;      ///< one line
    QString details;      ///< running text, an empty line between paragraphs; may be empty
    QStringList examples; ///< whole lines for a shell
    QList<QCommandLineOption> options;

    /** The program's exit status; throws a Failure. */
    int (*run)(const QCommandLineParser& line) = nullptr;
};

namespace CommandLine {

/** Parses what follows the command's name and runs it, or prints its help. */
int run(const Command& command, const QStringList& arguments);

/** The help of the program. */
QStringList overview(const QList<Command>& commands);
/** What the program is for, a sentence. */
QString purpose();
/** What holds for every command: its streams, and what they look like. */
QString conventions();

/** What the program ends with, and what that says. */
struct ExitStatus
{
    QString number;
    QString meaning;
};
QVector<ExitStatus> exitStatuses();

/** The command's own, and those that every command has. */
QList<QCommandLineOption> optionsOf(const Command& command);
/** ", but there is X" behind a name that is likely X, mistyped; else empty. */
QString orNear(const QString& name, const QStringList& names);
/** Every name of an option with its dashes. */
QStringList spellings(const QCommandLineOption& option);

/** For commands that print data. */
QCommandLineOption jsonOption();
QCommandLineOption verboseOption();
/** The folder to be published; without it the example content. */
QCommandLineOption contentOption();

bool wantsJson(const QCommandLineParser& line);

} // namespace CommandLine
