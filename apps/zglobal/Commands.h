#pragma once

#include "CommandLine.h"

Command demoCommand();
Command serveCommand();
Command updateCommand();
Command statusCommand();
Command giftCommand();
