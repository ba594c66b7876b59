#pragma once

#include "command/CommandLine.h"

Command bannersCommand();
Command demoCommand();
Command flashCommand();
Command giftCommand();
Command maskCommand();
Command openCommand();
Command reportCommand();
Command serveCommand();
Command showCommand();
Command statusCommand();
Command tidyCommand();
Command updateCommand();
