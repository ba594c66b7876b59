#include "tidy/zTidyDatatable.h"

#include "tidy/TidyPass.h"

zTidyDatatable::zTidyDatatable()
    : m_folder(QStringLiteral("res/dataTable/"))
{
}

void zTidyDatatable::setUseNames(const QStringList& names)
{
    m_useNames = names;
}

void zTidyDatatable::tidy()
{
    const TidyPass pass(QStringLiteral("tidy datatable"), m_folder, TidyPass::Files);
    if (!pass.begin())
        return;
    TidyCounts counts;
    const bool finished = pass.walk([&](const TidyEntry& entry) {
        if (m_useNames.contains(entry.name, Qt::CaseInsensitive))
            ++counts.use;
        else
            pass.discard(entry, QStringLiteral("remove"), entry.name, counts);
    });
    if (finished)
        pass.log(QStringLiteral("end:use=%1,delete=%2,delay=%3")
                     .arg(counts.use)
                     .arg(counts.removed)
                     .arg(counts.delayed));
}
