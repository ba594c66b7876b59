#include "chat/ZGroupWelcomelMgr.h"

#include "datatable/TableRows.h"

namespace {

// The program seeds this generator, so it is the one to draw from.
// clang-format off
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
int draw()
{
    return qrand();
}
QT_WARNING_POP
// clang-format on

} // namespace

QSharedPointer<ZGroupWelcomelMgr> ZGroupWelcomelMgr::m_instance;

ZGroupWelcomelMgr* ZGroupWelcomelMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance = QSharedPointer<ZGroupWelcomelMgr>(new ZGroupWelcomelMgr);
    return m_instance.data();
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

TableDescription ZGroupWelcomelMgr::describeTable()
{
    TableDescription description;
    description.duplicates = QStringLiteral("every text cell is a phrase, all are kept");
    description.recordCount = [] { return getInstance()->m_phrases.size(); };
    description.records = [] {
        QJsonArray phrases;
        for (const QString& phrase : getInstance()->m_phrases)
            phrases.append(phrase);
        return phrases;
    };
    return description;
}
