#include "client/ZGlobalClient.h"

#include <QCoreApplication>

#include <cstdio>

// start_client FOLDER: what a client does before it shows anything, and a line when it could.

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    ZGlobalClient client;
    if (!client.open(QString::fromLocal8Bit(argv[argc - 1]), {}) || !client.load()
        || !client.failures().isEmpty())
        return 1;
    std::puts("ready");
    return 0;
}
