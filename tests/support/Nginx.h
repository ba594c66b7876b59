#pragma once

#include "support/Literals.h"
#include "support/Patience.h"
#include "testing/ZTestFolder.h"

#include <QProcess>
#include <QTcpSocket>
#include <QtTest>

#include <memory>

namespace Nginx {

/** An nginx in the folder NAME, as NAME.conf there says; ends with the object. */
inline std::shared_ptr<QProcess> started(const QString& name, int port)
{
    // The shell's input ends with this process, in whatever way that ends.
    const QString script = u"cd %1; nginx -p . -e error.log -c %1.conf -g 'daemon off;' & "
                           "read line; kill $!; wait"_s;
    std::shared_ptr<QProcess> nginx(new QProcess, [](QProcess* process) {
        process->closeWriteChannel();
        process->waitForFinished(patience);
        delete process;
    });
    nginx->start(u"sh"_s, {u"-c"_s, script.arg(name)});
    const auto answers = [port] {
        QTcpSocket probe;
        probe.connectToHost(u"127.0.0.1"_s, static_cast<quint16>(port));
        return probe.waitForConnected();
    };
    if (!QTest::qWaitFor(answers, patience))
        qFatal("%s", ZTestFolder::read(name + u"/error.log"_s).constData());
    return nginx;
}

} // namespace Nginx
