#pragma once

#include "command/CommandLine.h"

/** All of them, in the order of the help. */
QList<Command> allCommands();

Command bannersCommand();
Command demoCommand();
Command diffCommand();
Command exportCommand();
Command flashCommand();
Command giftCommand();
Command lintCommand();
Command maskCommand();
Command openCommand();
Command publishCommand();
Command reportCommand();
Command rollbackCommand();
Command serveCommand();
Command showCommand();
Command statusCommand();
Command tidyCommand();
Command updateCommand();
Command whyCommand();
