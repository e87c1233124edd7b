#ifndef TREEFIXTURES_H
#define TREEFIXTURES_H

#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "testformat.h"

#include <QScopedPointer>
#include <QStringList>

/** What a row shows, from left to right: "speed | double | 3.5 m/s". */
inline QString rowText(const QTreeWidgetItem* row)
{
    QStringList texts;
    const int columns = row->treeWidget() ? row->treeWidget()->columnCount() : row->columnCount();
    for (int column = 0; column < columns; ++column)
        texts.append(row->text(column));
    return texts.join(QLatin1String(" | "));
}

/** What all rows below a row show, deeper ones with dots in front: ". first | int | 1". */
inline QStringList rowsBelow(const QTreeWidgetItem* row, const QString& indent = QString())
{
    QStringList texts;
    for (int i = 0; i < row->childCount(); ++i) {
        texts.append(indent + rowText(row->child(i)));
        texts += rowsBelow(row->child(i), indent + QLatin1String(". "));
    }
    return texts;
}

inline QStringList lines(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char('\n'));
}

/** A message type whose fields are added in one line each. */
class TestInfo : public MessageInfo
{
public:
    explicit TestInfo(const char* name, bool isMain = true)
        : MessageInfo(QString::fromLatin1(name), isMain)
    {
    }

    TestFieldInfo* add(const char* name, int flags = TestFieldInfo::Plain)
    {
        return add(new TestFieldInfo(QString::fromLatin1(name), flags));
    }
    TestFieldInfo* add(const char* name, int flags, const MessageInfo* subMessage)
    {
        return add(new TestFieldInfo(QString::fromLatin1(name), flags, FieldType(subMessage)));
    }
    TestFieldInfo* add(TestFieldInfo* field)
    {
        addField(field);
        return field;
    }

    TestMessage* createMessage() const { return new TestMessage(this); }
};

/** A message that the test owns for as long as the fixture lives. */
class OwnedMessage
{
public:
    explicit OwnedMessage(const MessageInfo* info)
        : m_reference(MessageReference::adopt(new TestMessage(info)))
    {
    }

    TestMessage* operator->() const
    {
        return const_cast<TestMessage*>(static_cast<const TestMessage*>(m_reference.get()));
    }
    operator const Message*() const { return m_reference.get(); }

private:
    MessageReference m_reference;
};

/** Adds a row for @p info to the tree and configures it, as an application does. */
inline MessageTreeWidgetItem* addRow(MessageTreeWidget* tree, const MessageInfo* info)
{
    MessageTreeWidgetItem* row = new MessageTreeWidgetItem(tree, info);
    tree->addTopLevelItem(row);
    row->configureInTreeWidget();
    return row;
}

/** Shows the tree and lets it be painted. */
inline void showTree(QTreeWidget* tree)
{
    tree->resize(500, 400);
    tree->show();
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

#endif
