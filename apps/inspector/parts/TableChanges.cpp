#include "inspector/parts/TableChanges.h"

#include "datatable/ZDataTableMgr.h"
#include "inspector/host/ClientHost.h"
#include "inspector/parts/ChangeMarks.h"
#include "models/ZRecordModel.h"

TableChanges::TableChanges(const ClientHost& host, QObject* parent)
    : QObject(parent)
{
    // The managers make folders in the one that they begin in.
    connect(&host, &ClientHost::sigEntered, this, &TableChanges::watch);
}

void TableChanges::watch()
{
    if (!m_watched.isEmpty())
        return;
    // Before and after the models follow the load, whose own connections stand between the two.
    const auto* tables = ZDataTableMgr::getInstance();
    connect(tables, &ZDataTableMgr::sigTableLoaded, this, [this](const QString& table) {
        if (ChangeMarks* changed = marks(table))
            changed->forget();
    });
    const auto statuses = tables->getTableStatuses();
    for (const TableStatus& status : statuses) {
        const Watched watched {new ZRecordModel(status.table, this), new ChangeMarks(this)};
        watched.marks->setSourceModel(watched.records);
        m_watched.insert(status.table, watched);
    }
    connect(tables, &ZDataTableMgr::sigTableLoaded, this, &TableChanges::sigLoaded);
}

QString TableChanges::words(const QString& table) const
{
    const ChangeMarks* changed = marks(table);
    if (changed == nullptr || changed->marked() + changed->gone() == 0)
        return {};
    return tr("%1 new or changed, %2 gone").arg(changed->marked()).arg(changed->gone());
}
