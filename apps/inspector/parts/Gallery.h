#pragma once

#include "inspector/parts/Wearables.h"

#include <QWidget>

class ClientHost;
class ExplanationView;
class Pictures;
class SearchBox;
class ZRecordModel;

/** The records of a table as tiles; beside them the selected one in full, moving if it moves. */
class Gallery : public QWidget
{
    Q_OBJECT

public:
    using WearableOf = Wearables::Wearable (*)(const QString& key);

    Gallery(ClientHost& host, Pictures& pictures, const QString& table, WearableOf wearableOf,
            QWidget* parent = nullptr);

    /** Whether there is one of this key, which is selected then. */
    bool select(const QString& key);
    QString selected() const { return m_selected; }
    void fetch() { m_moving->fetch(); }
    void refresh();
    bool isAtRest() const { return m_moving->isAtRest(); }

Q_SIGNALS:
    /** Somebody wants to see "Table/id". */
    void sigOrigin(const QString& thing);

private:
    class ByKey;

    void tell();

    WearableOf m_wearableOf;
    ZRecordModel* m_records;
    ByKey* m_filter;
    TileView* m_view;
    SearchBox* m_search;
    AnimationBox* m_moving;
    ExplanationView* m_explanation;
    QString m_selected;
};
