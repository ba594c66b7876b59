#pragma once

#include "chat/WordPattern.h"

#include <QString>
#include <QVarLengthArray>
#include <QVector>

/**
 * A line on its way through the word list, which can tell what of the original it has masked.
 *
 * It is kept in pieces, so that a mask costs what its neighbourhood does, however long the line is.
 * A piece keeps its number while masks change its length, down to nothing.
 */
class ChatLine
{
public:
    /** How long the pieces are at first: a line of a chat is one piece. */
    static constexpr int pieceLength = 512;

    using Stretches = QVarLengthArray<Stretch, 16>;

    struct Place
    {
        int piece;
        int offset;
    };
    using Places = QVarLengthArray<Place, 16>;

    /** Neighbouring characters as one text, whatever pieces they are in. */
    struct Window
    {
        QString text;
        Place begin;
        int before; ///< how many of them stand before the place that was asked for
    };

    /** A mask and the part of the original line that it covers, earlier masks in it included. */
    struct Mask
    {
        int rank; ///< the word's place in its list
        Stretch covered;
    };

    explicit ChatLine(const QString& text, bool traced = false);

    QString text() const;

    /** Every mask in the order of masking; empty unless the line is traced. */
    const QVector<Mask>& masks() const { return m_masks; }

    int pieceCount() const { return m_pieces.size(); }
    int pieceSize(int piece) const { return m_pieces.at(piece).text.size(); }

    /**
     * What stands from one place to another, with so many characters before and after it as far as
     * there are any, those before it from this piece on.
     */
    Window window(Place from, Place to, int before, int after, int firstPiece) const;
    Window pieces(int first, int last, int before, int after, int firstPiece) const;

    /**
     * Puts one asterisk in the place of each stretch of the window; they stand in order and do not
     * overlap. Returns where the asterisks are. Windows taken before are out of date.
     */
    Places mask(int rank, const Window& window, const Stretches& stretches);

private:
    struct Piece
    {
        QString text;
        QVector<Stretch> origins; // of each character, when traced
    };

    void trace(int rank, const Window& window, const Stretches& stretches);

    int m_length;
    bool m_traced;
    QVector<Piece> m_pieces; // one at least
    QVector<Mask> m_masks;
};
