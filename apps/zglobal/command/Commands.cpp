#include "command/Commands.h"

QList<Command> allCommands()
{
    return {demoCommand(),     serveCommand(),  updateCommand(), statusCommand(),  showCommand(),
            giftCommand(),     lintCommand(),   diffCommand(),   exportCommand(),  publishCommand(),
            rollbackCommand(), maskCommand(),   flashCommand(),  bannersCommand(), openCommand(),
            tidyCommand(),     reportCommand(), whyCommand()};
}
