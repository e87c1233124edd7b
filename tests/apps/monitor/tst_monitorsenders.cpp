#include "celldelegate.h"
#include "comparepanel.h"
#include "findbar.h"
#include "formpanel.h"
#include "mavlinkframes.h"
#include "messagestatisticswidget.h"
#include "naturalorder.h"
#include "panelset.h"
#include "plotlegend.h"
#include "plotpanel.h"
#include "plotseries.h"
#include "senderchoice.h"
#include "statisticspanel.h"
#include "testbase.h"
#include "testfolder.h"
#include "textrows.h"
#include "toldrows.h"
#include "treeactions.h"
#include "treefilter.h"
#include "treepanel.h"
#include "treerow.h"
#include "treerows.h"
#include "typepanel.h"
#include "waitfor.h"
#include "watch.h"
#include "watchbar.h"

#include <QAction>
#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QTreeView>

#include <memory>

namespace
{

/** A desk with all panels, and recordings in which heartbeats and states of several senders come. */
struct SenderDesk : Desk
{
    SenderDesk()
        : panels(this)
        , tree(*panels.find<TreePanel>())
    {
        tree.getTree()->setColumns({MessageTreeWidget::NameColumn, MessageTreeWidget::ValueColumn});
        tree.getWidget()->resize(600, 500);
        tree.getWidget()->show();
    }

    QString tell(const QString& steps)
    {
        QStringList told;
        for (const QString& step : steps.split("; ")) {
            const QString text = doStep(step.section(' ', 0, 0), step.section(' ', 1));
            if (!text.isNull())
                told.append(text);
        }
        return told.join("; ");
    }

    PanelSet panels;
    TreePanel& tree;
    SenderChoice choice{this};
    QSignalSpy wanted{this, &Desk::definitionsWanted};

private:
    QString doStep(const QString& verb, const QString& rest)
    {
        QTreeWidgetItem* const row = findRow(*tree.getTree(), rest);
        if (verb == "play")
            play(rest);
        else if (verb == "close")
            getSources()->close(getSources()->getSession(rest.toInt()));
        else if (verb == "again")
            getLatest()->showAgain(), getLatest()->setSuspended(false);
        else if (verb == "rows")
            tree.getRows()->setArrangement(TreeRows::Arrangement(rest.toInt()));
        else if (verb == "only")
            getLatest()->setSender(rest);
        else if (verb == "find")
            tree.getFindBar()->find(rest);
        else if (verb == "next")
            return tree.getFindBar()->findNext(), tree.getTree()->currentItem()->text(0);
        else if (verb == "expand" || verb == "collapse")
            row->setExpanded(verb == "expand");
        else if (verb == "expanded")
            return row->isExpanded() ? "yes" : "no";
        else if (verb == "all")
            tree.getRows()->expandAll();
        else if (verb == "columns")
            tree.getTree()->getToggleRawValueColumnAction()->trigger();
        else if (verb == "fold" || verb == "flat")
            panels.find<TypePanel>()->setFolded(verb == "fold");
        else if (verb == "filter")
            panels.find<TypePanel>()->getFilter()->setText(rest);
        else if (verb == "count")
            panels.find<StatisticsPanel>()->getFilter()->setText(rest);
        else if (verb == "tick" || verb == "untick")
            tick(rest, verb == "tick");
        else if (verb == "pin")
            use(row, "Pin");
        else if (verb == "watch" || verb == "plot")
            use(row, verb);
        else if (verb == "compare")
            compare(rest.split(", "));
        else if (verb == "secret")
            const_cast<FieldInfo*>(getTypes()->getSubject(0).info->getFieldInfo(rest))->setConfidential(true);
        else if (verb == "form")
            form(rest);
        else if (verb == "menu")
            useMenu(rest.section(" > ", 0, 0).split(" + "), rest.section(" > ", 1));
        else if (verb == "clip")
            return QGuiApplication::clipboard()->text().replace('\n', '/');
        else if (verb == "wanted")
            return QString::number(wanted.size());
        else if (verb == "current")
            return tree.getTree()->currentItem()->parent()->text(0) + '/' + tree.getTree()->currentItem()->text(0);
        else if (verb == "status")
            return tree.tick(), QString("") + row->text(1);
        else if (verb == "save" || verb == "restore")
            keep(verb == "save");
        else if (verb == "says")
            return row ? row->text(1) : QString("no row");
        else
            return QString("") + look(verb);
        return QString();
    }

    // "north H1:1=5 S2:1=6": the recording with a heartbeat of the mode 5 and a state of the load 6.
    void play(const QString& recording)
    {
        QByteArray bytes;
        for (const QString& message : recording.split(' ').mid(1)) {
            if (message == "U") { // of a type that is not known
                bytes += script.bytes("U5");
                continue;
            }
            const bool isHeartbeat = message.startsWith('H');
            MavlinkEncoder encoder(script.info(isHeartbeat ? 0 : 1));
            encoder.set(isHeartbeat ? "custom_mode" : "load", message.section('=', 1).toInt());
            MavlinkEncoder::FrameHeader header;
            header.system = quint8(message.mid(1).section(':', 0, 0).toInt());
            header.component = quint8(message.section(':', 1).section('=', 0, 0).toInt());
            bytes += encoder.toFrame(header);
        }
        SourceOptions options;
        options.address = folder.write(recording.section(' ', 0, 0) + ".raw", bytes);
        StreamSource::Playback playback;
        playback.factor = 0;
        QString error;
        const SourceSession* const session = getSources()->open(options, playback, &error);
        QVERIFY2(session && waitFor([session]() { return session->getState() == SourceSession::Ended; }),
                 qPrintable(error));
        getLatest()->setSuspended(false); // hands on what waits
        refresh();
    }

    void tick(const QString& name, bool on)
    {
        const QVariant state = on ? Qt::Checked : Qt::Unchecked;
        for (int i = 0; i < getTypes()->getCount(); ++i) {
            const QModelIndex index = getTypes()->indexOf(i);
            if (nameOf(getTypes()->getSubject(i)) == name)
                getTypes()->setData(index, state, Qt::CheckStateRole);
            else if (index.parent().isValid() && getTypes()->getSender(index.parent()) == name)
                getTypes()->setData(index.parent(), state, Qt::CheckStateRole);
        }
    }

    // The rows of the list for types and their senders.
    void useMenu(const QStringList& names, const QString& entry)
    {
        TypePanel& panel = *panels.find<TypePanel>();
        QAbstractItemModel& model = *panel.getView()->model();
        for (int i = 0; i < model.rowCount(); ++i) {
            const QString name = model.index(i, 0).data().toString() + ' ' + model.index(i, 1).data().toString();
            if (name.trimmed() == names.first())
                panel.getView()->setCurrentIndex(model.index(i, 0));
            else if (names.contains(name))
                panel.getView()->selectionModel()->select(model.index(i, 0),
                                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        const std::unique_ptr<QMenu> menu(panel.createMenu());
        for (QAction* const action : menu->actions())
            if (action->text().remove('&') == entry)
                action->trigger();
    }

    static QString nameOf(const Subject& subject) { return subject.info->getName() + ' ' + subject.sender; }

    void use(QTreeWidgetItem* row, const QString& what)
    {
        tree.getTree()->setCurrentItem(row);
        for (const FieldUse& use : getFieldUses())
            if (use.name == what)
                use.action->trigger();
        if (what == "Pin")
            tree.getActions()->getShowActions().last()->trigger();
    }

    void compare(const QStringList& names)
    {
        tree.getTree()->setCurrentItem(findRow(*tree.getTree(), names.first()));
        for (const QString& name : names)
            findRow(*tree.getTree(), name)->setSelected(true);
        for (const FieldUse& use : getFieldUses())
            if (use.name == "compare")
                use.action->trigger();
    }

    // The columns, the lines that differ, and what is said of all.
    QString compared() const
    {
        const ComparePanel& panel = *panels.find<ComparePanel>();
        QStringList texts;
        for (int line = -1; line < panel.getView()->topLevelItemCount(); ++line) {
            const QTreeWidgetItem* const item =
                line < 0 ? panel.getView()->headerItem() : panel.getView()->topLevelItem(line);
            QStringList cells;
            for (int column = 0; column < panel.getView()->columnCount() && !item->text(1).isEmpty(); ++column)
                cells.append(item->text(column).replace('\n', ' '));
            if (!cells.isEmpty())
                texts.append(cells.join('|'));
        }
        return texts.join(", ") + ", " + panel.findChild<QLabel*>()->text();
    }

    void form(const QString& name)
    {
        QVector<Subject> subjects = getChosenTypes();
        for (int i = 0; i < getTypes()->getCount(); ++i)
            if (nameOf(getTypes()->getSubject(i)) == name)
                subjects.append(getTypes()->getSubject(i));
        chooseTypes(subjects);
    }

    void keep(bool save)
    {
        QSettings settings(folder.filePath("senders.ini"), QSettings::IniFormat);
        for (const char* id : {"watches", "plot", "types"})
            for (const PanelSet::Entry& entry : panels.getEntries())
                if (QString(entry.row.id) == id)
                    save ? entry.panel->saveSettings(settings) : entry.panel->restoreSettings(settings);
        save ? tree.getRows()->saveSettings(settings) : tree.getRows()->restoreSettings(settings);
    }

    QString look(const QString& what)
    {
        QStringList texts;
        if (what == "seen")
            return shownRows(tree.getTree()->invisibleRootItem());
        if (what == "shown")
            return withoutFields(shownRows(tree.getTree()->invisibleRootItem()));
        if (what == "matches")
            return QString::number(tree.getFindBar()->getFilter()->getMatchCount());
        if (what == "list")
            return listed(*panels.find<TypePanel>()->getView()->model());
        if (what == "counted") {
            QWidget* const page = panels.find<StatisticsPanel>()->getWidget();
            panels.find<StatisticsPanel>()->setWhole(false);
            page->show(); // and so up to date
            const QString rows = shownRows(panels.find<StatisticsPanel>()->getStatistics()->invisibleRootItem());
            page->hide();
            return rows;
        }
        if (what == "ticked")
            for (int i = 0; i < getTypes()->getCount(); ++i)
                if (getTypes()->index(i, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked)
                    texts.append(nameOf(getTypes()->getSubject(i)));
        if (what == "offered") {
            choice.refresh();
            for (int i = 1; i < choice.count(); ++i)
                texts.append(choice.itemText(i));
        }
        if (what == "watches")
            for (const Watch* watch : panels.find<WatchBar>()->getWatches())
                texts.append(watch->getName() + '=' + watch->getText());
        if (what == "plots") {
            panels.find<PlotPanel>()->refresh();
            for (const auto& series : panels.find<PlotPanel>()->getSeries())
                texts.append(panels.find<PlotPanel>()->getLegend()->topLevelItem(int(texts.size()))->text(0) + '=' +
                             QString::number(series->getMessageCount()));
        }
        if (what == "compared")
            return compared();
        if (what == "forms")
            for (const QGroupBox* box : panels.find<FormPanel>()->findChildren<QGroupBox*>())
                texts.append(box->title() + '=' + valueIn(box));
        return texts.join(", ");
    }

    // "+1:1, .-HEARTBEAT, .?SYS_STATUS": ticked, not ticked, and ticked in part.
    static QString listed(const QAbstractItemModel& model, const QModelIndex& parent = QModelIndex())
    {
        QStringList rows;
        for (int i = 0; i < model.rowCount(parent); ++i) {
            const QModelIndex index = model.index(i, 0, parent);
            const QString sender = model.index(i, 1, parent).data().toString();
            const bool isFlat = !parent.isValid() && !model.hasChildren(index);
            rows.append(QString(parent.isValid() ? "." : "") + "-?+"[index.data(Qt::CheckStateRole).toInt()] +
                        index.data().toString() + (isFlat ? ' ' + sender : QString()));
            if (model.hasChildren(index))
                rows.append(listed(model, index));
        }
        return rows.join(", ");
    }

    // Rows of types and senders only, whose names do not begin with a small letter.
    static QString withoutFields(const QString& rows)
    {
        QStringList names;
        for (const QString& name : rows.split(", "))
            if (!QRegularExpression("^\\.*[a-z]").match(name).hasMatch())
                names.append(name);
        return names.join(", ");
    }

    // Of the field with the number.
    static QString valueIn(const QGroupBox* box)
    {
        for (const QLabel* label : box->findChildren<QLabel*>())
            if (label->text() == "5" || label->text() == "6" || label->text() == "7")
                return label->text();
        return "";
    }

    MavlinkScript script;
    static TestFolder folder;
};

TestFolder SenderDesk::folder;

} // namespace

/** Rows, forms, watches and plots of messages that several send. */
class tst_monitorsenders : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void everySenderHasRowsOfItsOwn();
    void whatComesOfARowFollowsItsSender();
    void rowsStandBesideOneAnother();
    void theListIsFoldedAndFiltered();
    void namesStandInNaturalOrder();
};

void tst_monitorsenders::everySenderHasRowsOfItsOwn()
{
    static const TextRow rows[] = {
        // Who sends is told where several do.
        {"play a H1:1=5 S1:1=1; shown", "HEARTBEAT, SYS_STATUS"},
        {"play a H10:1=7 H1:1=5 H2:1=6 S1:1=1; shown; says HEARTBEAT 2:1/custom_mode; says HEARTBEAT 10:1/custom_mode",
         "HEARTBEAT 1:1, HEARTBEAT 2:1, HEARTBEAT 10:1, SYS_STATUS; 6; 7"},
        {"rows 0; play a H10:1=7 H1:1=5 H2:1=6; shown; says HEARTBEAT/custom_mode; status HEARTBEAT",
         "HEARTBEAT; 6; 2:1"},
        {"play a H1:1=5; status HEARTBEAT; play b H2:1=7; status HEARTBEAT 2:1 @ b.raw", "1:1; "}, // told once
        {"rows 2; play a H10:1=7 H1:1=5 S1:1=1; shown; says 1:1; expand 1:1/HEARTBEAT; says 1:1/HEARTBEAT/custom_mode",
         "1:1, .HEARTBEAT, .SYS_STATUS, 10:1, .HEARTBEAT; 2 types; 5"},
        // More than a few start folded, and have nothing below before they are unfolded.
        {"play a H1:1=5 H2:1=6 H3:1=7 H4:1=5 H5:1=6; says HEARTBEAT 3:1/custom_mode; expand HEARTBEAT 3:1; columns; "
         "says HEARTBEAT 3:1/custom_mode; says HEARTBEAT 2:1/custom_mode; all; says HEARTBEAT 2:1/custom_mode; rows 2; "
         "says 3:1/HEARTBEAT; expand 3:1; says 3:1/HEARTBEAT",
         "no row; 7; no row; 6; no row"},
        // One that is not wanted goes alone, also where all share a row, and stays away.
        {"play a H1:1=5 H2:1=6 H3:1=7; untick HEARTBEAT 2:1; shown; ticked; rows 2; shown; rows 0; shown; "
         "untick HEARTBEAT 1:1; untick HEARTBEAT 3:1; shown; tick HEARTBEAT 2:1; says HEARTBEAT/custom_mode; rows 1; "
         "untick HEARTBEAT 2:1; tick HEARTBEAT 3:1; save; close 0; play a H1:1=5 H2:1=6 H3:1=7; shown",
         "HEARTBEAT 1:1, HEARTBEAT 3:1; HEARTBEAT 1:1, HEARTBEAT 3:1; 1:1, .HEARTBEAT, 3:1, .HEARTBEAT; HEARTBEAT; ; "
         "6; "
         "HEARTBEAT 3:1"},
        {"restore; play a H1:1=5 H2:1=6 H3:1=7; ticked", "HEARTBEAT 3:1"},
        // So does what was folded.
        {"play a H1:1=5 S1:1=1; collapse HEARTBEAT; save", ""},
        {"restore; play a H1:1=5 S1:1=1; expanded HEARTBEAT; expanded SYS_STATUS; expand HEARTBEAT; save", "no; yes"},
        {"restore; play a H1:1=5 S1:1=1; expanded HEARTBEAT", "yes"},
        // And while columns come and go.
        {"play a H1:1=5 H2:1=6; collapse HEARTBEAT 1:1; columns; columns; expanded HEARTBEAT 1:1; expanded HEARTBEAT "
         "2:1",
         "no; yes"},
        {"rows 2; play a H1:1=5 S1:1=1 H2:1=6; expand 1:1/SYS_STATUS; collapse 1:1; columns; expanded 1:1; expanded "
         "2:1; columns; expanded 1:1; expanded 2:1; expanded 1:1/SYS_STATUS; expanded 1:1/HEARTBEAT",
         "no; yes; no; yes; yes; no"},
        {"rows 0; play a H1:1=5 H2:1=6; says HEARTBEAT/custom_mode; untick HEARTBEAT 2:1; says HEARTBEAT/custom_mode; "
         "again; says "
         "HEARTBEAT/custom_mode",
         "6; 5; 5"},
        // Names follow the sources that are open, and what is shown the sender that is chosen.
        {"play a H1:1=5 H2:1=6; play b H1:1=7; shown; says HEARTBEAT 1:1 @ b.raw/custom_mode; only 1:1 @ a.raw; shown; "
         "only ; close 0; shown; says HEARTBEAT/custom_mode",
         "HEARTBEAT 1:1 @ a.raw, HEARTBEAT 1:1 @ b.raw, HEARTBEAT 2:1 @ a.raw; 7; HEARTBEAT 1:1 @ a.raw; HEARTBEAT; 7"},
        {"rows 2; play a H1:1=5; play b H1:1=7; shown; close 1; shown; says 1:1/HEARTBEAT/custom_mode",
         "1:1 @ a.raw, .HEARTBEAT, 1:1 @ b.raw, .HEARTBEAT; 1:1, .HEARTBEAT; no row"},
        {"play a H10:1=7; offered; play b H1:1=5; offered", "10:1; 1:1 @ b.raw, 10:1 @ a.raw"},
        // Pins.
        {"play a H1:1=5 H2:1=6 S1:1=1; pin HEARTBEAT 2:1; shown; pin SYS_STATUS; shown; pin HEARTBEAT 2:1; shown; "
         "rows 2; pin 2:1; pin 1:1/SYS_STATUS; shown",
         "HEARTBEAT 2:1, HEARTBEAT 1:1, SYS_STATUS; HEARTBEAT 2:1, SYS_STATUS, HEARTBEAT 1:1; SYS_STATUS, HEARTBEAT "
         "1:1, "
         "HEARTBEAT 2:1; 2:1, .HEARTBEAT, 1:1, .HEARTBEAT, .SYS_STATUS"},
        // Find, also in rows that nobody unfolded.
        {"play a H1:1=5 H2:1=6 S1:1=1; find hea 2:1; seen; find custom; matches; rows 2; matches; find load; seen",
         "HEARTBEAT 2:1, .type, .autopilot, .base_mode, .custom_mode, .system_status, .mavlink_version; 4; 4; "
         "1:1, .SYS_STATUS, ..load"},
        {"play a H1:1=5 H2:1=6 H3:1=7 H4:1=5 H5:1=6; find custom 3:1; matches; find 7; matches; rows 2; matches; find "
         "3:1 custom; matches",
         "2; 1; 1; 2"},
        {"rows 2; play a H1:1=5 H2:1=6 H3:1=7 H4:1=5 H5:1=6; find custom; matches; next; find 3:1; shown; matches; "
         "find */HEARTBEAT/custom_mode; matches",
         "10; MAV_MODE_FLAG_CUSTOM_MODE_ENABLED; 3:1, .HEARTBEAT; 1; 5"},
    };
    checkRows(rows, [](const QString& steps) { return SenderDesk().tell(steps); });
}

void tst_monitorsenders::whatComesOfARowFollowsItsSender()
{
    static const TextRow rows[] = {
        {"play a H1:1=5 H2:1=6; watch HEARTBEAT 1:1/custom_mode; watches; play b H1:1=7; watches; close 1; watches",
         "HEARTBEAT.custom_mode 1:1=5; HEARTBEAT.custom_mode 1:1 @ a.raw=5; HEARTBEAT.custom_mode 1:1=5"},
        // The row of all: the first one's, and no two in turn.
        {"rows 0; play a H1:1=5; watch HEARTBEAT/custom_mode; watches; play b H2:1=7; watches",
         "HEARTBEAT.custom_mode=5; HEARTBEAT.custom_mode 1:1 @ a.raw=5"},
        {"play a H1:1=5 H2:1=6; form HEARTBEAT 1:1; forms; form HEARTBEAT 2:1; forms; play b H1:1=7; forms",
         "HEARTBEAT 1:1=5; HEARTBEAT 1:1=5, HEARTBEAT 2:1=6; HEARTBEAT 1:1 @ a.raw=5, HEARTBEAT 2:1 @ a.raw=6"},
        {"play a H1:1=5 H2:1=6; plot HEARTBEAT 2:1/custom_mode; play b H1:1=1 H2:1=6; plots; rows 0; "
         "plot HEARTBEAT/custom_mode; play c H1:1=5; plots",
         "HEARTBEAT.custom_mode (2:1 @ a.raw)=0; HEARTBEAT.custom_mode=1"},
        // Over a restart: the only sender of a type may be another one then.
        {"play a H1:1=5 S1:1=1; watch HEARTBEAT/custom_mode; plot HEARTBEAT/custom_mode; save", ""},
        {"restore; play a H2:1=6; watches; plots", "HEARTBEAT.custom_mode=6; HEARTBEAT.custom_mode=1"},
        {"play a H1:1=5 H2:1=6; watch HEARTBEAT 2:1/custom_mode; plot HEARTBEAT 2:1/custom_mode; save", ""},
        {"restore; play a H1:1=5 H2:1=6 H3:1=7; watches; plots",
         "HEARTBEAT.custom_mode 2:1=6; HEARTBEAT.custom_mode (2:1)=1"},
    };
    checkRows(rows, [](const QString& steps) { return SenderDesk().tell(steps); });
}

void tst_monitorsenders::rowsStandBesideOneAnother()
{
    static const TextRow rows[] = {
        {"play a H1:1=5 H2:1=6 H3:1=6; compare HEARTBEAT 1:1, HEARTBEAT 2:1; compared; "
         "compare HEARTBEAT 2:1, HEARTBEAT 3:1; play b H2:1=7; compared",
         "Field|\u2260|HEARTBEAT 1:1|HEARTBEAT 2:1, custom_mode|\u2260|5|6, 1 of 6 differ; "
         "Field|\u2260|HEARTBEAT 2:1 @ a.raw|HEARTBEAT 3:1 @ a.raw, 0 of 6 differ"},
        // Fields, of whatever types, and what only one of the rows has.
        {"play a H1:1=5 S1:1=6; compare HEARTBEAT/custom_mode, SYS_STATUS/load; compared",
         "Field|\u2260|HEARTBEAT.custom_mode 1:1|SYS_STATUS.load 1:1, Value|\u2260|5|0.6 %, 1 of 1 differ"},
        // Whether something hidden is the same is hidden as well.
        {"play a H1:1=5 H2:1=6; secret custom_mode; compare HEARTBEAT 1:1, HEARTBEAT 2:1; compared",
         "Field|\u2260|HEARTBEAT 1:1|HEARTBEAT 2:1, 0 of 6 differ"},
    };
    checkRows(rows, [](const QString& steps) { return SenderDesk().tell(steps); });
}

void tst_monitorsenders::theListIsFoldedAndFiltered()
{
    static const TextRow rows[] = {
        {"play a H10:1=7 H2:1=6 S10:1=1; list; fold; list; untick HEARTBEAT 10:1; list; play b S2:1=1; list; close 1; "
         "list; "
         "flat; list",
         "+HEARTBEAT 2:1, +HEARTBEAT 10:1, +SYS_STATUS 10:1; +2:1, .+HEARTBEAT, +10:1, .+HEARTBEAT, .+SYS_STATUS; "
         "+2:1, "
         ".+HEARTBEAT, ?10:1, .-HEARTBEAT, .+SYS_STATUS; +2:1 @ a.raw, .+HEARTBEAT, +2:1 @ b.raw, .+SYS_STATUS, ?10:1 "
         "@ "
         "a.raw, .-HEARTBEAT, .+SYS_STATUS; +2:1, .+HEARTBEAT, ?10:1, .-HEARTBEAT, .+SYS_STATUS; +HEARTBEAT 2:1, "
         "-HEARTBEAT 10:1, +SYS_STATUS 10:1"},
        {"fold; play a H1:1=5 S1:1=1; untick 1:1; list; tick 1:1; list; forms; form HEARTBEAT 1:1; filter sys; list; "
         "forms",
         "-1:1, .-HEARTBEAT, .-SYS_STATUS; +1:1, .+HEARTBEAT, .+SYS_STATUS; ; +1:1, .+SYS_STATUS; HEARTBEAT=5"},
        {"play a H1:1=5 H2:1=6 S1:1=1; menu HEARTBEAT 1:1 > Take out of the Tree; shown; menu HEARTBEAT 1:1 > Show in "
         "the "
         "Tree; shown; menu SYS_STATUS 1:1 > Pin to the Top; shown; menu HEARTBEAT 2:1 > Show Only This in the Tree; "
         "shown",
         "HEARTBEAT 2:1, SYS_STATUS; HEARTBEAT 1:1, HEARTBEAT 2:1, SYS_STATUS; SYS_STATUS, HEARTBEAT 1:1, HEARTBEAT "
         "2:1; "
         "HEARTBEAT 2:1"},
        {"play a H1:1=5 S1:1=1 U; menu HEARTBEAT 1:1 + SYS_STATUS 1:1 > Copy Name; clip; menu Unknown types > Copy "
         "Name; clip; menu HEARTBEAT 1:1 > Load Definitions...; wanted; menu Unknown types > Load Definitions...; "
         "wanted",
         "HEARTBEAT/SYS_STATUS; Unknown types; 0; 1"},
        // Who goes to a row of the list is led to that of the tree.
        {"rows 2; play a H1:1=5 H2:1=6 H3:1=7 H4:1=5 H5:1=6; menu HEARTBEAT 3:1 > ; current", "3:1/HEARTBEAT"},
        {"play a H10:1=7 H2:1=6 S10:1=1; filter 10:1 hea; list; fold; list; filter ; list; filter nothing; list",
         "+HEARTBEAT 10:1; +10:1, .+HEARTBEAT; +2:1, .+HEARTBEAT, +10:1, .+HEARTBEAT, .+SYS_STATUS; "},
        // So are the statistics, also by a sender whom no name there says, and with what comes meanwhile.
        {"play a H1:1=5 S1:1=1; count 1:1 sys; counted; count 1:1; counted; count sys; play b H2:1=6 S2:1=1; counted; "
         "count 2:1 hea; counted; menu SYS_STATUS 1:1 @ a.raw > Show Statistics; counted; count nothing; counted",
         "corvel, .SYS_STATUS; corvel, .HEARTBEAT, .SYS_STATUS; corvel, .SYS_STATUS (a.raw), .SYS_STATUS (b.raw); "
         "corvel, .HEARTBEAT (b.raw); corvel, .HEARTBEAT (a.raw), .HEARTBEAT (b.raw), .SYS_STATUS (a.raw), "
         "..Rates/Intervals, ...No time, .SYS_STATUS (b.raw); "},
    };
    checkRows(rows, [](const QString& steps) { return SenderDesk().tell(steps); });
}

void tst_monitorsenders::namesStandInNaturalOrder()
{
    static const TextRow rows[] = {
        {"10:1 1:1", "1:1 10:1"},
        {"car2 car10 car1", "car1 car2 car10"},
        {"1:68 1:190 1:1", "1:1 1:68 1:190"},
        {"a01 a1 a0", "a0 a01 a1"},
        {"b a2b a2", "a2 a2b b"},
        {"a99999999999999999999 a2", "a2 a99999999999999999999"},
    };
    checkRows(rows, [](const QString& names) {
        QStringList sorted = names.split(' ');
        std::sort(sorted.begin(), sorted.end(), NaturalOrder::isBefore);
        return sorted.join(' ');
    });
}

QTEST_MAIN(tst_monitorsenders)
#include "tst_monitorsenders.moc"
