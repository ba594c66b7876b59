#pragma once

#include <QSplitter>

/** Parts side by side, or one below the other, that keep the sizes somebody has given them from one
 *  run to the next. */
class KeptSplitter : public QSplitter
{
    Q_OBJECT

public:
    /** Sizes are kept under the name, which becomes the object's; those given hold until then. */
    KeptSplitter(const QString& name, Qt::Orientation orientation, const QList<QWidget*>& parts,
                 const QList<int>& sizes);

private:
    QString settingsKey() const;
    QList<int> keptSizes() const;
    void saveSizes() const;

    QString m_name;
};
