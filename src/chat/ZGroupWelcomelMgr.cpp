#include "chat/ZGroupWelcomelMgr.h"

#include "datatable/TableRows.h"

#include <cstdlib>

namespace {

// The program seeds this generator, so it is the one to draw from; what Qt 6 has seeds itself.
// clang-format off
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
int draw()
{
#if QT_VERSION_MAJOR < 6
    return qrand();
#else
    return std::rand();
#endif
}
QT_WARNING_POP
// clang-format on

/** The one table without columns: whatever cell holds a text is a phrase. */
class PhraseTable final : public TableDeclaration
{
public:
    PhraseTable()
    {
        m_schema.duplicates = QStringLiteral("every text cell is a phrase, all are kept");
    }

    bool load(const QString& path) const override
    {
        return ZGroupWelcomelMgr::getInstance()->loadGroupWelcomeTable(path);
    }
    int recordCount() const override { return phrases().size(); }
    QJsonArray records() const override
    {
        QJsonArray records;
        for (const QString& phrase : phrases())
            records.append(phrase);
        return records;
    }

    TableSnapshot snapshot() const override
    {
        const auto held = std::make_shared<const QVector<QString>>(phrases());
        TableSnapshot snapshot {{}, held};
        for (const QString& phrase : *held)
            snapshot.records.append(&phrase);
        return snapshot;
    }
    QVariant value(const void* record, int /*column*/) const override
    {
        return *static_cast<const QString*>(record);
    }
    int compare(const void* left, const void* right, int /*column*/) const override
    {
        return static_cast<const QString*>(left)->compare(*static_cast<const QString*>(right));
    }

private:
    static const QVector<QString>& phrases()
    {
        return ZGroupWelcomelMgr::getInstance()->getWelcomeList();
    }
};

} // namespace

QSharedPointer<ZGroupWelcomelMgr> ZGroupWelcomelMgr::m_instance;

ZGroupWelcomelMgr* ZGroupWelcomelMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZGroupWelcomelMgr>(new ZGroupWelcomelMgr);
    return m_instance.data();
}

const TableDeclaration& ZGroupWelcomelMgr::declaration()
{
    static const PhraseTable table;
    return table;
}

bool ZGroupWelcomelMgr::loadGroupWelcomeTable(const QString& path)
{
    m_phrases.clear();
    TableRows table;
    if (!table.read(path))
        return false;
    table.forEachRow([this](const QJsonArray& cells) {
        for (const QJsonValue& cell : cells) {
            const QString phrase = cell.toString();
            if (!phrase.isEmpty())
                m_phrases.append(phrase);
        }
    });
    return true;
}

void ZGroupWelcomelMgr::clear()
{
    m_phrases.clear();
}

QString ZGroupWelcomelMgr::getRandWelcome()
{
    if (m_phrases.isEmpty())
        return {};
    return m_phrases.at(draw() % m_phrases.size());
}

const QVector<QString>& ZGroupWelcomelMgr::getWelcomeList() const
{
    return m_phrases;
}
