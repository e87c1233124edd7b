#ifndef VALUECELL_H
#define VALUECELL_H

#include <QString>
#include <QVector>

class QTreeWidgetItem;

/** What a cell of values says to a reader, where the text of its row says all of it. */
struct ValueCell
{
    /** A piece of a line; faint is what is only there to tell the rest. */
    struct Part
    {
        QString text;
        bool isFaint;
    };

    /**
     * Reads a cell.
     *
     * @param text    what the row says there
     * @param isRaw   whether that is the value as transmitted, of which nothing is left out
     * @param digits  significant digits of numbers with a fraction; 0 for all
     */
    static ValueCell read(const QTreeWidgetItem* item, const QString& text, bool isRaw, int digits);

    QString number;      ///< stands with its point below those of others; may be empty
    QVector<Part> parts; ///< behind the number
    bool isFaint = false;

    /** All of it in a line. */
    QString toString() const;
};

#endif
