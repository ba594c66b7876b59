#include "chat/ZSensitiveWordsInfoListMgr.h"

#include "chat/WordFilter.h"
#include "datatable/DeclaredTable.h"

namespace {

// Of the words that are left out: enough to find them in the table, and no flood.
constexpr int shownOfWord = 32;
constexpr int namedWords = 100;

template <class Info>
void logLeftOut(const QHash<QString, Info>& words)
{
    const QString text = QStringLiteral("Sensitive word with metacharacters left out, %1 "
                                        "characters where %2 are the most:");
    int count = 0;
    for (const Info& info : words) {
        const QString& word = info.word;
        if (word.size() <= WordPattern::maxSpecialLength) // nearly all: no need to look at them
            continue;
        if (WordPattern::kindOf(word) == WordPattern::TooLong && ++count <= namedWords)
            qCWarning(LogCategories::load)
                << qUtf8Printable(text.arg(word.size()).arg(WordPattern::maxSpecialLength))
                << word.left(shownOfWord) << "...";
    }
    if (count > namedWords)
        qCWarning(LogCategories::load)
            << "Sensitive words with metacharacters left out for their length:" << count;
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

const TableDeclaration& ZSensitiveWordsInfoListMgr::declaration()
{
    using namespace TableParts;
    static const DeclaredTable<ZSensitiveWordsInfoListMgr, ZSensitiveWordsInfo> table {
        {
            {Required, "key", Cells::Text(), Z_FIELD(ZSensitiveWordsInfo, word),
             "a part of a pattern, not escaped"},
        },
        KeyedBy {&ZSensitiveWordsInfo::word, &ZSensitiveWordsInfoListMgr::m_words},
        Duplicates {"kept once"},
        Afterwards {&ZSensitiveWordsInfoListMgr::prepare},
        Afterwards {[](ZSensitiveWordsInfoListMgr& words) { logLeftOut(words.m_words); }},
        Logs {"SensitiveWordsInfoList.json加载完毕"}};
    return table;
}

const TableDeclaration& ZSensitiveWordsInfoListMgr::newDeclaration()
{
    using namespace TableParts;
    static const DeclaredTable<ZSensitiveWordsInfoListMgr, ZNewSensitiveWordsInfo> table {
        {
            {Required, "key", Cells::Text(), Z_FIELD(ZNewSensitiveWordsInfo, word),
             "a part of a pattern, not escaped"},
        },
        KeyedBy {&ZNewSensitiveWordsInfo::word, &ZSensitiveWordsInfoListMgr::m_newWords},
        Duplicates {"kept once"},
        Afterwards {&ZSensitiveWordsInfoListMgr::prepare},
        Afterwards {[](ZSensitiveWordsInfoListMgr& words) { logLeftOut(words.m_newWords); }},
        Logs {"NewSensitiveWordsInfoList.json加载完毕"}};
    return table;
}

bool ZSensitiveWordsInfoListMgr::loadSensitiveWordsInfoListTable(const QString& path)
{
    return declaration().load(path);
}

bool ZSensitiveWordsInfoListMgr::loadNewSensitiveWordsInfoListTable(const QString& path)
{
    return newDeclaration().load(path);
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

void ZSensitiveWordsInfoListMgr::prepare()
{
    m_filter.reset(new WordFilter(m_words.keys() + m_newWords.keys()));
}
