#include "datatable/TableRows.h"

#include "host/ZGlobalConfig.h"

bool TableRows::read(const QString& path)
{
    return ZGlobalConfig::readTableFile(path, header, rows);
}
