#include "chat/ZSensitiveWordsInfoListMgr.h"

#include "chat/WordFilter.h"
#include "datatable/TableColumns.h"

#include <QDebug>

namespace {

template <class Info>
const TableColumns<Info>& columns()
{
    static const TableColumns<Info> declared {
        {Required, "key", Cells::Text(), Z_FIELD(Info, word), "a part of a pattern, not escaped"},
    };
    return declared;
}

template <class Info>
bool load(const QString& path, QHash<QString, Info>& words)
{
    const auto table = columns<Info>().read(path);
    if (!table)
        return false;
    words.clear();
    table->forEach([&](const Info& info) { words.insert(info.word, info); });
    return true;
}

QString duplicates()
{
    return QStringLiteral("kept once");
}

} // namespace

QSharedPointer<ZSensitiveWordsInfoListMgr> ZSensitiveWordsInfoListMgr::m_instance;

ZSensitiveWordsInfoListMgr::ZSensitiveWordsInfoListMgr(QObject* parent)
    : QObject(parent)
    , m_filter(new WordFilter)
{
}

ZSensitiveWordsInfoListMgr::~ZSensitiveWordsInfoListMgr() = default;

ZSensitiveWordsInfoListMgr* ZSensitiveWordsInfoListMgr::getInstance()
{
    if (m_instance.isNull())
        m_instance =
            QSharedPointer<ZSensitiveWordsInfoListMgr>(new ZSensitiveWordsInfoListMgr(nullptr));
    return m_instance.data();
}

bool ZSensitiveWordsInfoListMgr::loadSensitiveWordsInfoListTable(const QString& path)
{
    if (!load(path, m_words))
        return false;
    prepare();
    qDebug().noquote() << QStringLiteral("SensitiveWordsInfoList.json加载完毕");
    return true;
}

bool ZSensitiveWordsInfoListMgr::loadNewSensitiveWordsInfoListTable(const QString& path)
{
    if (!load(path, m_newWords))
        return false;
    prepare();
    qDebug().noquote() << QStringLiteral("NewSensitiveWordsInfoList.json加载完毕");
    return true;
}

void ZSensitiveWordsInfoListMgr::clear()
{
    m_words.clear();
    prepare();
}

const QHash<QString, ZSensitiveWordsInfo>& ZSensitiveWordsInfoListMgr::getSensitiveWordsMap()
{
    return m_words;
}

const QHash<QString, ZNewSensitiveWordsInfo>& ZSensitiveWordsInfoListMgr::getNewSensitiveWordsMap()
{
    return m_newWords;
}

QString ZSensitiveWordsInfoListMgr::sensitiveWordsCheck(QString text)
{
    ChatLine line(text);
    m_filter->mask(line);
    return line.text();
}

QVector<stWordMask> ZSensitiveWordsInfoListMgr::explainSensitiveWords(const QString& text)
{
    ChatLine line(text, true);
    m_filter->mask(line);
    QVector<stWordMask> masks;
    for (const ChatLine::Mask& mask : line.masks()) {
        const auto list =
            mask.rank < m_words.size() ? stWordMask::OlderList : stWordMask::NewerList;
        masks.append(
            {m_filter->words().at(mask.rank), list, mask.covered.start, mask.covered.length});
    }
    return masks;
}

TableDescription ZSensitiveWordsInfoListMgr::describeTable()
{
    return columns<ZSensitiveWordsInfo>().describe(QStringLiteral("key"), duplicates(),
                                                   [] { return getInstance()->m_words; });
}

TableDescription ZSensitiveWordsInfoListMgr::describeNewTable()
{
    return columns<ZNewSensitiveWordsInfo>().describe(QStringLiteral("key"), duplicates(),
                                                      [] { return getInstance()->m_newWords; });
}

void ZSensitiveWordsInfoListMgr::prepare()
{
    *m_filter = WordFilter(m_words.keys() + m_newWords.keys());
}
