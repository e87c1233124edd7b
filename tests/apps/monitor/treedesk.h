#ifndef TREEDESK_H
#define TREEDESK_H

#include "desk.h"
#include "flagfieldinfo.h"
#include "formatinfo.h"
#include "formatregistry.h"
#include "messagetreewidget.h"
#include "panelset.h"
#include "plotpanel.h"
#include "testformat.h"
#include "toldrows.h"
#include "treepanel.h"
#include "treerows.h"

/** A desk with the message tree and the plot, and messages that are simply set. */
struct TreeDesk : Desk
{
    TreeDesk()
        : format("desk")
        , nav(new MessageInfo("NAV_STATE"))
        , battery(new MessageInfo("BATTERY"))
        , speed(new TestFieldInfo("ground_speed"))
        , mode(new TestFieldInfo("mode", TestFieldInfo::Plain, FieldType(FieldType::UnsignedType, 1, "uint8")))
        , text(new TestFieldInfo("text", TestFieldInfo::String))
        , cells(new TestFieldInfo("cells", TestFieldInfo::Repeated, FieldType(FieldType::SignedType, 4, "int32")))
        , point(new MessageInfo("Point", false))
        , x(new TestFieldInfo("x"))
        , place(nullptr)
        , panels(this, rows())
        , panel(*panels.find<TreePanel>())
        , plot(*panels.find<PlotPanel>())
        , tree(*panel.getTree())
    {
        speed->setUnit("m/s");
        speed->setDescription("Speed over <ground>");
        speed->setRangeText("0 to 80");
        mode->setEnumerators({FieldInfo::Enumerator(1, "IDLE", "waits"), FieldInfo::Enumerator(2, "FLYING")}, false);
        speed->setInvalidValue(FieldValue::fromDouble(-1));
        x->setUnit("m");
        point->addField(x);
        place = new TestFieldInfo("place", TestFieldInfo::Repeated, FieldType(point));
        nav->setShortDescriptiveText("Where it is");
        for (TestFieldInfo* field : {speed, mode, text, place})
            nav->addField(field);
        battery->addField(cells);
        format.addMessageInfo(nav);
        format.addMessageInfo(battery);
        format.addMessageInfo(point);
        FormatRegistry::getInstance()->addFormat(&format);
        tree.setColumns({MessageTreeWidget::NameColumn, MessageTreeWidget::ValueColumn});
        add({battery, nav});
        panel.getWidget()->resize(600, 500);
        panel.getWidget()->show();
    }

    ~TreeDesk() override { FormatRegistry::getInstance()->removeFormat(&format); }

    static QVector<PanelRow> rows()
    {
        QVector<PanelRow> rows;
        for (const PanelRow& row : getPanelTable())
            if (QString(row.id) == "tree" || QString(row.id) == "plot")
                rows.append(row);
        return rows;
    }

    /** Gives types of a sender rows. */
    void add(const QVector<const MessageInfo*>& infos, const QString& sender = QString())
    {
        QVector<Subject> subjects;
        for (const MessageInfo* info : infos)
            subjects.append({info, sender});
        panel.getRows()->set(subjects, true);
    }

    /** A message of nav; the caller's. */
    TestMessage* createNav(double number, unsigned int state = 2)
    {
        TestMessage* const message = new TestMessage(nav);
        message->set(speed, number)->set(mode, FieldValue::fromUnsigned(state, 1))->setText(text, "hello \"you\"");
        TestMessage* const first = new TestMessage(point);
        TestMessage* const second = new TestMessage(point);
        message->set(place, QList<Message*>{first->set(x, 1.5), second->set(x, 2.5)});
        return message;
    }

    void send(TestMessage* message, qint64 milliseconds = 0)
    {
        const MessageReference reference = MessageReference::adopt(message);
        message->setTime(milliseconds * 1000);
        Q_EMIT getLatest()->newMessage(message);
        getTap()->deliver(message);
    }

    void sendCells(int count)
    {
        TestMessage* const message = new TestMessage(battery);
        message->fill(cells, count, 100);
        send(message);
    }

    QTreeWidgetItem* find(const QString& way) const { return findRow(tree, way); }
    QString shown() const { return shownRows(tree.invisibleRootItem()); }

    FormatInfo format;
    MessageInfo* nav;
    MessageInfo* battery;
    TestFieldInfo* speed;
    TestFieldInfo* mode;
    TestFieldInfo* text;
    TestFieldInfo* cells;
    MessageInfo* point;
    TestFieldInfo* x;
    TestFieldInfo* place;
    PanelSet panels;
    TreePanel& panel;
    PlotPanel& plot;
    MessageTreeWidget& tree;
};

#endif
