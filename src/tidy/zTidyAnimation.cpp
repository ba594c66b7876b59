#include "tidy/zTidyAnimation.h"

#include "tidy/TidyPass.h"

zTidyAnimation::zTidyAnimation()
    : m_folder(QStringLiteral("res/animation/"))
{
}

void zTidyAnimation::setUseNames(const QSet<QString>& names)
{
    m_useNames = names;
}

void zTidyAnimation::tidy()
{
    const TidyPass pass(QStringLiteral("tidy animation"), m_folder, TidyPass::Folders);
    if (!pass.begin())
        return;
    TidyCounts counts;
    const bool finished = pass.walk([&](const TidyEntry& entry) {
        if (!m_useNames.contains(entry.name)) {
            pass.discard(entry, QStringLiteral("remove"), entry.name, counts);
            return;
        }
        ++counts.use;
        pass.removeArchiveIfOld(entry);
    });
    if (finished)
        pass.log(QStringLiteral("end:use=%1,delete=%2,delay=%3")
                     .arg(counts.use)
                     .arg(counts.removed)
                     .arg(counts.delayed));
}
