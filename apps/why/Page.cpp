#include "presentation/ZBannerMgr.h"
#include "presentation/ZOtherBannerMgr.h"
#include "presentation/zH5WebConfigMgr.h"
#include "why/Subjects.h"
#include "why/Why.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

using Pages = QHash<QString, QString>; // the path that an address has to hold, by page

const ColumnSchema* embeddingColumn(const Table& table)
{
    const auto& columns = table.columns();
    const auto found = std::find_if(columns.begin(), columns.end(), [](const ColumnSchema& column) {
        return !column.pageColumn.isEmpty();
    });
    return found == columns.end() ? nullptr : &*found;
}

/** The pages of a table, one row after the other. */
class PagesOf
{
public:
    explicit PagesOf(const QString& table)
        : m_raw(Why::statusOf(table))
        , m_column(embeddingColumn(m_raw.table()))
    {
    }

    const Why::RawTable& raw() const { return m_raw; }

    /** The row that lists the page; null when none does. */
    const Why::RawRow* rowOf(const QString& page) const
    {
        const auto found =
            std::find_if(m_raw.rows().begin(), m_raw.rows().end(), [&](const Why::RawRow& row) {
                return isListed(row) && pageIn(row) == page;
            });
        return found == m_raw.rows().end() ? nullptr : &*found;
    }

    /** The row that would list a page for the address, if it were to open embedded. */
    const Why::RawRow* rowNear(const QString& address) const
    {
        const auto found =
            std::find_if(m_raw.rows().begin(), m_raw.rows().end(), [&](const Why::RawRow& row) {
                if (m_column == nullptr || isListed(row))
                    return false;
                const QRegularExpression pattern(m_column->pagePattern);
                const QString path = pattern.match(pageIn(row)).captured(1);
                return !path.isEmpty() && address.contains(path);
            });
        return found == m_raw.rows().end() ? nullptr : &*found;
    }

    QString flag(const Why::RawRow& row) const
    {
        return QStringLiteral("%1 is %2")
            .arg(m_column->name, m_raw.table().text(row.row, m_column->name));
    }

private:
    bool isListed(const Why::RawRow& row) const
    {
        return m_column != nullptr && row.fate != Why::RawRow::NoRow
            && m_raw.table().value(row.row, m_column->name).toInt() > 0;
    }
    QString pageIn(const Why::RawRow& row) const
    {
        return m_raw.table().text(row.row, m_column->pageColumn).trimmed();
    }

    Why::RawTable m_raw;
    const ColumnSchema* m_column;
};

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

QString faultsOf(const QVector<PagesOf>& tables)
{
    QStringList faults;
    for (const PagesOf& pages : tables) {
        const QString fault = Why::loadFault(pages.raw().status());
        if (!fault.isEmpty())
            faults.append(
                QStringLiteral("%1 is not loaded: %2").arg(pages.raw().status().table, fault));
    }
    return faults.join(QStringLiteral("; "));
}

void tellRows(const QVector<PagesOf>& tables, const QString& page, const QString& address,
              Why::Explanation& explanation)
{
    for (const PagesOf& pages : tables) {
        if (const Why::RawRow* row = page.isEmpty() ? nullptr : pages.rowOf(page)) {
            explanation.origins.append(pages.raw().origin(row));
            if (row->fate == Why::RawRow::LeftOut)
                explanation.remarks.append(
                    {QStringLiteral("row %1").arg(row->row.number),
                     row->words + QStringLiteral("; its page counts all the same")});
        }
        const Why::RawRow* near = page.isEmpty() ? pages.rowNear(address) : nullptr;
        if (near != nullptr)
            explanation.remarks.append({QStringLiteral("near"),
                                        QStringLiteral("row %1 of %2 has such a page, but its %3")
                                            .arg(QString::number(near->row.number),
                                                 pages.raw().status().table, pages.flag(*near))});
    }
}

/** The client's own pages, of which an address may be one. */
void tellOwnPage(const QString& address, Why::Explanation& explanation)
{
    const auto plain = [](const QString& text) { return text.section(QLatin1Char('?'), 0, 0); };
    const Why::RawTable pages(Why::statusOf(QStringLiteral("H5WebConfig")));
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

Why::Explanation Why::page(const QString& address)
{
    Explanation explanation;
    explanation.subject = {QStringLiteral("page"), QString(), address, QString()};
    const QVector<PagesOf> banners {PagesOf(QStringLiteral("CS_BannerConfig")),
                                    PagesOf(QStringLiteral("CS_BannerConfigNew"))};
    const QVector<PagesOf> others {PagesOf(QStringLiteral("CS_VideoHobbyBanner"))};
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
    tellOwnPage(address, explanation);
    explanation.holds = explanation.isDecided();
    explanation.verdict = explanation.holds
        ? QStringLiteral("%1 opens embedded: %2")
              .arg(address, explanation.steps.at(explanation.deciding).rule)
        : QStringLiteral("%1 opens outside: no listed page has its path in this address")
              .arg(address);
    return explanation;
}
