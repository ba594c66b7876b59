#pragma once

#include "chat/WordPattern.h"

#include <QString>
#include <QVarLengthArray>
#include <QVector>

/** A line on its way through the word list, which can tell what of the original it has masked. */
class ChatLine
{
public:
    using Stretches = QVarLengthArray<Stretch, 16>;

    /** A mask and the part of the original line that it covers, earlier masks in it included. */
    struct Mask
    {
        int rank; ///< the word's place in its list
        Stretch covered;
    };

    explicit ChatLine(const QString& text, bool traced = false);

    const QString& text() const { return m_text; }

    /** Every mask in the order of masking; empty unless the line is traced. */
    const QVector<Mask>& masks() const { return m_masks; }

    /** Puts one asterisk in the place of each stretch; they stand in order and do not overlap. */
    void mask(int rank, const Stretches& stretches);

private:
    void trace(int rank, const Stretches& stretches);

    QString m_text;
    bool m_traced;
    QVector<Stretch> m_origins; // of each character, when traced, and of the place after the last
    QVector<Mask> m_masks;
};
