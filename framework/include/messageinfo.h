#ifndef CORVEL_MESSAGEINFO_H
#define CORVEL_MESSAGEINFO_H

#include "corvelframework_export.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QVector>

class FieldInfo;
class FormatInfo;
class Message;

/**
 * The description of a message type: its name and its fields.
 *
 * A long-lived object whose address is the type's identity. It owns its fields. Descriptions are built once, before
 * messages of the type are shown; to be used on the GUI thread, except that the plain accessors may be read anywhere
 * once it is built.
 *
 * A QObject for the sake of its end: the widgets let go of a type, its fields and its messages when it is deleted, on
 * the GUI thread. It may be made on any thread, and needs no event loop.
 */
class CORVELFRAMEWORK_EXPORT MessageInfo : public QObject
{
    Q_OBJECT

public:
    /**
     * @param name  the type's name in its format
     * @param main  whether messages of the type are received on their own; false for types that only occur as
     *              sub-messages
     */
    explicit MessageInfo(const QString& name, bool main = true);
    virtual ~MessageInfo();

    QString getName() const { return m_name; }

    /** One line about the type for a tool tip; empty when there is none. */
    QString getShortDescriptiveText() const { return m_description; }
    void setShortDescriptiveText(const QString& text) { m_description = text; }

    /** Whether messages of this type are received, kept and displayed on their own. */
    bool isMain() const { return m_main; }

    /** The fields that stand directly in the type, virtual ones last; component fields hang below their parent field.
     */
    QVector<const FieldInfo*> getFieldInfos() const { return m_fields; }

    /** The field of that name directly in the type, or null. */
    const FieldInfo* getFieldInfo(const QString& name) const;

    /** Adds @p field behind the others and takes ownership. The field and its component fields then occur in this type.
     */
    void addField(FieldInfo* field);

    /**
     * A new message of the type with one reference, the caller's. A format whose messages keep more than their bytes
     * makes its own kind here.
     *
     * @param data  the message as received
     */
    virtual Message* newMessage(const QByteArray& data) const;

    /** The format that the type belongs to; null until FormatInfo::addMessageInfo(). */
    const FormatInfo* getFormatInfo() const { return m_format; }

private:
    Q_DISABLE_COPY(MessageInfo)
    friend class FormatInfo;

    QString m_name;
    QString m_description;
    bool m_main;
    QVector<const FieldInfo*> m_fields;
    const FormatInfo* m_format;
};

#endif
