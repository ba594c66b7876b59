#include "presentation/ZBannerMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "presentation/zH5WebConfigMgr.h"
#include "why/Subjects.h"
#include "why/Why.h"

#include <algorithm>

namespace {

using Pages = QHash<QString, QString>; // the path that an address has to hold, by page

using File = std::shared_ptr<const Why::RawTable>;

/** The first row of which something holds; null where it holds of none. */
template <class Holds>
const Why::RawRow* firstRow(const Why::RawTable& table, Holds holds)
{
    const auto found = std::find_if(table.rows().begin(), table.rows().end(), holds);
    return found == table.rows().end() ? nullptr : &*found;
}

/** The row that lists the page. */
const Why::RawRow* rowOf(const QString& page, const Why::RawTable& table)
{
    return firstRow(table,
                    [&](const Why::RawRow& row) { return row.isEmbedding && row.page == page; });
}

/** The row that would list a page for the address, if it were to open embedded. */
const Why::RawRow* rowNear(const QString& address, const Why::RawTable& table)
{
    return firstRow(table, [&](const Why::RawRow& row) {
        return !row.isEmbedding && !row.path.isEmpty() && address.contains(row.path);
    });
}

QString flag(const Why::RawRow& row, const Why::RawTable& table)
{
    const QString& column = table.embeddingColumn()->name;
    return QStringLiteral("%1 is %2").arg(column, table.table().text(row.row, column));
}

/** Asks one set of pages; the first that has the address decides. */
void askPages(const QString& rule, const Pages& pages, const QString& address, const QString& page,
              const QString& fault, Why::Explanation& explanation)
{
    Why::Step step {rule, Why::Step::NotReached, QString()};
    if (!explanation.isDecided()) {
        const bool holds = pages.contains(page);
        Q_ASSERT(!holds || address.contains(pages.value(page)));
        step.answer = holds ? Why::Step::Yes : Why::Step::No;
        step.value = holds
            ? QStringLiteral("the path %1 of %2 is part of it").arg(pages.value(page), page)
            : QStringLiteral("none of %1 paths is part of it").arg(pages.size());
        if (!holds && !fault.isEmpty())
            step.value = fault;
        if (holds)
            explanation.deciding = static_cast<int>(explanation.steps.size());
    }
    explanation.steps.append(step);
}

QString faultsOf(const QVector<File>& tables)
{
    QStringList faults;
    for (const File& table : tables) {
        const QString fault = Why::loadFault(table->status());
        if (!fault.isEmpty())
            faults.append(QStringLiteral("%1 is not loaded: %2").arg(table->status().table, fault));
    }
    return faults.join(QStringLiteral("; "));
}

void tellRows(const QVector<File>& tables, const QString& page, const QString& address,
              Why::Explanation& explanation)
{
    for (const File& table : tables) {
        if (const Why::RawRow* row = page.isEmpty() ? nullptr : rowOf(page, *table)) {
            explanation.origins.append(table->origin(row));
            if (row->fate == Why::RawRow::LeftOut)
                explanation.remarks.append(
                    {QStringLiteral("row %1").arg(row->row.number),
                     row->words + QStringLiteral("; its page counts all the same")});
        }
        const Why::RawRow* near = page.isEmpty() ? rowNear(address, *table) : nullptr;
        if (near != nullptr)
            explanation.remarks.append({QStringLiteral("near"),
                                        QStringLiteral("row %1 of %2 has such a page, but its %3")
                                            .arg(QString::number(near->row.number),
                                                 table->status().table, flag(*near, *table))});
    }
}

/** The client's own pages, of which an address may be one. */
void tellOwnPage(const QString& address, const Why::RawTable& pages, Why::Explanation& explanation)
{
    const auto plain = [](const QString& text) { return text.section(QLatin1Char('?'), 0, 0); };
    for (const Why::RawRow& row : pages.rows()) {
        if (row.fate != Why::RawRow::Record)
            continue;
        const auto define = static_cast<E_H5WebConfigDefine>(row.id.toInt());
        const QString own = zH5WebConfigMgr::getInstance().getURLByDefine(define);
        if (own.isEmpty() || plain(own) != plain(address))
            continue;
        explanation.remarks.append({QStringLiteral("own page"),
                                    QStringLiteral("page %1 of H5WebConfig, row %2: %3")
                                        .arg(row.id, QString::number(row.row.number), own)});
    }
}

} // namespace

Why::Explanation Why::page(const QString& address, const Files& files)
{
    Explanation explanation;
    explanation.subject = {QStringLiteral("page"), QString(), address, QString()};
    const QVector<File> banners {files(QStringLiteral("CS_BannerConfig")),
                                 files(QStringLiteral("CS_BannerConfigNew"))};
    const QVector<File> others {files(QStringLiteral("CS_VideoHobbyBanner"))};
    ZBannerMgr* manager = ZBannerMgr::getInstance();
    QString page = manager->bannerCefPage(address);
    askPages(QStringLiteral("it is the page of a banner"), manager->getTablePages(), address, page,
             faultsOf(banners), explanation);
    askPages(QStringLiteral("it is a page of the web service"), manager->getServerPages(), address,
             page,
             manager->getServerPages().isEmpty()
                 ? QStringLiteral("the service has told of none in this process")
                 : QString(),
             explanation);
    ZOtherBannerMgr* other = ZOtherBannerMgr::getInstance();
    if (page.isEmpty())
        page = other->otherBannerCefPage(address);
    askPages(QStringLiteral("it is the page of a secondary banner"), other->getPages(), address,
             page, faultsOf(others), explanation);
    tellRows(banners + others, page.trimmed(), address, explanation);
    tellOwnPage(address, *files(QStringLiteral("H5WebConfig")), explanation);
    explanation.holds = explanation.isDecided();
    explanation.verdict = explanation.holds
        ? QStringLiteral("%1 opens embedded: %2")
              .arg(address, explanation.steps.at(explanation.deciding).rule)
        : QStringLiteral("%1 opens outside: no listed page has its path in this address")
              .arg(address);
    return explanation;
}
