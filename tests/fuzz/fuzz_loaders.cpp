#include "datatable/ZDataTableMgr.h"
#include "fuzz/Fuzz.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/** One table file into every manager. */
ZGLOBAL_FUZZER
{
    static const QTemporaryDir work;
    static const QVector<TableStatus> tables = [] {
        // What a manager fetches after a load goes nowhere, without a server.
        require(QDir::setCurrent(work.path()), "a working folder");
        return ZDataTableMgr::getInstance()->getTableStatuses();
    }();
    QFile file(QStringLiteral("table"));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "written");
    file.close();
    for (const TableStatus& table : tables) {
        if (table.declaration == nullptr)
            continue;
        const int before = table.declaration->recordCount();
        const bool loaded = table.declaration->load(file.fileName());
        const int count = table.declaration->recordCount();
        require(loaded || count == before, "a refused table leaves the records");
        require(table.declaration->records().size() == count, "all records can be shown");
        require(!table.declaration->load(QStringLiteral("none")), "no file, no load");
    }
}
