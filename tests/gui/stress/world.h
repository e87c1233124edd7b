#ifndef WORLD_H
#define WORLD_H

#include "chance.h"
#include "formatinfo.h"
#include "testformat.h"

#include <initializer_list>
#include <utility>

/** A format of random types, and random messages of it. */
class World
{
public:
    explicit World(Chance* chance);
    ~World();

    const FormatInfo* getFormat() const { return &m_format; }
    const QVector<const MessageInfo*>& getInfos() const { return m_infos; }
    const QVector<const FieldInfo*>& getFields() const { return m_fields; }

    /** Any type, or null. */
    const MessageInfo* pickInfo();
    /** A type whose messages are received on their own. */
    const MessageInfo* pickMainInfo();

    MessageReference createMessage(const MessageInfo* info);

    /**
     * Whether what a row shows is told by its last message alone. Sub-messages of other types than announced, fields
     * without a value, sub-messages that may be left out and types that contain themselves leave something of earlier
     * messages.
     */
    bool isTame() const { return m_tame; }

private:
    Q_DISABLE_COPY(World)

    /** Each flag that comes up with its percentage. */
    int pickFlags(std::initializer_list<std::pair<int, int>> percentages);
    void addFields(MessageInfo* info, int number);
    TestFieldInfo* createField(const QString& name, int number);
    void addComponents(TestFieldInfo* field, int depth);
    void fill(TestMessage* message, const FieldInfo* field, int depth);
    int countFor(const FieldInfo* field, int depth);
    FieldValue createValue(const FieldInfo* field);

    Chance* m_chance;
    FormatInfo m_format;
    QVector<const MessageInfo*> m_infos;
    QVector<const FieldInfo*> m_fields;
    bool m_tame;
    int m_budget; // of values in the message that is being made
};

#endif
