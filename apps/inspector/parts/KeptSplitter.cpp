#include "inspector/parts/KeptSplitter.h"

#include <QSettings>

KeptSplitter::KeptSplitter(const QString& name, Qt::Orientation orientation,
                           const QList<QWidget*>& parts, const QList<int>& sizes)
    : QSplitter(orientation)
    , m_name(name)
{
    setObjectName(name);
    for (QWidget* part : parts)
        addWidget(part);
    const QList<int> kept = keptSizes();
    setSizes(kept.isEmpty() ? sizes : kept);
    connect(this, &QSplitter::splitterMoved, this, &KeptSplitter::saveSizes);
}

QString KeptSplitter::settingsKey() const
{
    return QStringLiteral("splitters/") + m_name;
}

QList<int> KeptSplitter::keptSizes() const
{
    const QStringList words = QSettings().value(settingsKey()).toStringList();
    QList<int> sizes;
    int largest = 0;
    for (const QString& word : words) {
        bool isNumber = false;
        const int size = word.toInt(&isNumber);
        if (!isNumber || size < 0 || size > QWIDGETSIZE_MAX)
            return {};
        sizes.append(size);
        largest = qMax(largest, size);
    }
    // Those of other parts than there are now are of no use, nor are parts that nobody would see.
    return sizes.size() == count() && largest > 0 ? sizes : QList<int>();
}

void KeptSplitter::saveSizes() const
{
    QStringList words;
    const QList<int> now = sizes();
    for (const int size : now)
        words.append(QString::number(size));
    QSettings().setValue(settingsKey(), words);
}
