#pragma once

#include "ZNetWorkExport.h"

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QString>

/**
 * The host's configuration values, and the two readers that go with them: table files and archives.
 *
 * Values are set by the program or read from a JSON file. They belong to the GUI thread; the
 * static operations keep no state and may be called from any thread.
 *
 * Everything here answers with a bool. Who wants to tell a person why it was false passes a text
 * for the cause, which is written on false only; nothing is logged.
 */
class ZNETWORK_EXPORT ZGlobalConfig
{
public:
    static ZGlobalConfig& getInstance();

    /** The value of a key, an empty text when the key is not set. */
    QString getConfig(const QString& key) const;

    void setConfig(const QString& key, const QString& value);

    /**
     * Sets every value of a JSON file: one flat object of texts; a number is taken as its decimal
     * text. Keys that the file does not name keep their values. False when the file cannot be read
     * or holds anything else; then no value has changed.
     */
    bool loadConfig(const QString& path, QString* error = nullptr);

    /**
     * Reads a table: column names to cell indexes, and the rows. docs/table-format.md says what is
     * a table, HostLimits how large it may be. The rows are handed over as they stand: an element
     * may be null or no row at all, and a row may have fewer or more cells than there are columns.
     * On false header and rows are untouched.
     */
    static bool readTableFile(const QString& path, QHash<QString, int>& header, QJsonArray& rows);
    static bool readTableFile(const QByteArray& bytes, QHash<QString, int>& header,
                              QJsonArray& rows);
    static bool readTableFile(const QString& path, QHash<QString, int>& header, QJsonArray& rows,
                              QString* error);
    static bool readTableFile(const QByteArray& bytes, QHash<QString, int>& header,
                              QJsonArray& rows, QString* error);

    /**
     * Unpacks a zip or tar archive (gzip allowed) into the folder that holds it, and keeps it.
     *
     * All or nothing: the archive is first unpacked into a hidden folder beside it and checked to
     * its end; only then are its files moved to their places: those in deeper folders first, those
     * of one depth in the order of the archive, but files of the top folder that end in ".flajson"
     * after all others, and the one named like the archive (abc.flajson in abc_12) the very last.
     * So the presence of that file, or else of the last one of the top folder, tells that
     * everything is there, even after a kill. When a move fails, what was moved goes back. What a
     * killed run leaves is a hidden folder, which the next run for any archive in the same folder
     * removes. Nothing is forced onto the disk: against a loss of power this does not guard.
     *
     * overwrite: replace files that exist, instead of failing because of them. A replaced set is
     * first moved away, in the opposite order, so old and new are never seen mixed.
     *
     * An archive is refused as a whole for anything that is neither a file nor a folder, for names
     * that lead out of the folder or through a link in it, that some system would not store or
     * would store under another name (letter case included), for an entry in the archive's own
     * place, for a damaged or encrypted entry, and beyond the limits of HostLimits.
     *
     * Blocks while it works. Several archives may be unpacked at once; a second run for the same
     * archive waits for the first.
     */
    static bool unZipFile(const QString& path, bool overwrite);
    static bool unZipFile(const QString& path, bool overwrite, QString* error);

private:
    QHash<QString, QString> m_values;
};
