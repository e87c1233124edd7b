#include "corvelevent.h"
#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "fieldvaluelabel.h"
#include "formatinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "messagewidget.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlabel.h"
#include "pathexpressionlineedit.h"
#include "pathexpressionlistwidget.h"
#include "testbase.h"
#include "translations.h"
#include "treefixtures.h"

/** What the widgets say in another language, whether they are made in it or follow it. */
class tst_Translations : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void findsALanguage_data();
    void findsALanguage();
    void eventsAreNamedInIt();
    void widgetsFollow();
    void whatApplicationsWroteStays();
};

static void speak(const char* language)
{
    QCOMPARE(Translations::install(QLocale(text(language))), text(language));
    QCoreApplication::processEvents();
}

static const char* const TypeWords = "HIDDEN: c.c; INNER-: x; POSE: x[m] many.r gone.o s.so sub.o=INNER";

namespace
{

/** A widget of each class, with something in it, and all that they say. */
struct Widgets : Stage
{
    Widgets()
        : Stage(TypeWords)
        , statistics(&coordinator, nullptr)
        , events(&log, nullptr)
        , value(nullptr)
        , form(nullptr, nullptr)
        , list(nullptr, PathExpression::AllParts, nullptr, nullptr)
        , box(nullptr, PathExpression::AllParts, nullptr, nullptr)
        , emptyBox(&expression, PathExpression::AllParts, nullptr, nullptr)
    {
        tree.setColumns(columns(text("0,3,2,1,5")));
        add("HIDDEN");
        add("POSE");
        add("POSE");
        send("POSE many=5,6");
        addRow(&tree, nullptr);
        dynamic_cast<MessageTreeWidgetItem*>(tree.topLevelItem(2))->clearValues();
        log.append(CorvelEvent(CorvelEvent::SourceEvent, text("gone")), QDateTime());

        const MessageStatisticsCoordinator::Origin unknown(nullptr, 0, QString(), text("id 7"));
        format.addMessageInfo(new MessageInfo(text("KNOWN")));
        const int stream = coordinator.addStream();
        MessageStatistics* const counted = coordinator.findOrCreate(
            stream, 0, MessageStatisticsCoordinator::Origin(format.getMessageInfos().first(), 0, QString()));
        counted->addReception(-1);
        for (int i = 0; i < 40; ++i)
            counted->addReception((i < 20 ? i : i + 30) * 100000);
        coordinator.findOrCreate(stream, 1, unknown)->addReception(0);
        coordinator.countEvent(CorvelEvent::CrcError, 3, stream);
        statistics.updateTree();
    }

    QStringList say()
    {
        statistics.updateTree(); // as a timer does
        QStringList said;
        Q_FOREACH (QAction* action, tree.getToggleColumnActions())
            said << action->text() << action->toolTip();
        const QTreeWidget* const trees[] = {&tree, &statistics};
        for (int i = 0; i < 2; ++i) {
            for (int column = 0; column < trees[i]->columnCount(); ++column)
                said << trees[i]->headerItem()->text(column);
            said += rowTexts(*trees[i]);
            for (QTreeWidgetItemIterator row(const_cast<QTreeWidget*>(trees[i])); *row; ++row)
                for (int column = 0; column < trees[i]->columnCount(); ++column)
                    said << (*row)->toolTip(column);
        }
        said << events.horizontalHeaderItem(0)->text() << events.horizontalHeaderItem(1)->text()
             << events.item(0, 0)->text() << value.text() << form.windowTitle() << label.text() << line.text()
             << entriesText(list) << entriesText(box) << entriesText(emptyBox);
        return said;
    }

    FormatInfo format{text("f")};
    MessageStatisticsCoordinator coordinator;
    MessageStatisticsWidget statistics;
    EventLog log;
    EventLogTableWidget events;
    FieldValueLabel value;
    MessageWidget form;
    PathExpressionLabel label;
    PathExpressionLineEdit line;
    PathExpression expression{nullptr};
    PathExpressionListWidget list;
    PathExpressionComboBox box;
    PathExpressionComboBox emptyBox;
};

} // namespace

void tst_Translations::initTestCase()
{
    if (Translations::getLanguages().size() == 1)
        QSKIP("This build has no translations");
}

void tst_Translations::findsALanguage_data()
{
    QTest::addColumn<QString>("found");
    QTest::newRow("de_AT") << "de";
    QTest::newRow("en_GB") << "en";
    QTest::newRow("ja_JP") << "en";
}

void tst_Translations::findsALanguage()
{
    QFETCH(QString, found);
    QCOMPARE(Translations::find(QLocale(text(QTest::currentDataTag()))), found);
    QVERIFY(Translations::getLanguages().contains(found));
}

void tst_Translations::eventsAreNamedInIt()
{
    EventLog log;
    log.append(CorvelEvent(CorvelEvent::CrcError, text("x")), QDateTime());
    speak("de");
    QCOMPARE(CorvelEvent::getTypeName(CorvelEvent::CrcError), text("CRC-Fehler"));
    QCOMPARE(log.toCsv(), QByteArray("Time,Type,Message\r\n,CRC error,x\r\n")); // whoever reads files, reads it always
    for (int i = 0; i < 1315; ++i)
        log.log(CorvelEvent(CorvelEvent::CrcError, text("x")), QDateTime(), 0);
    log.flushAll();
    QCOMPARE(log.getEntries().last().event.getMessage(), text("1.314 x x (insgesamt 1.315)"));
    speak("en");
    QCOMPARE(CorvelEvent::getTypeName(CorvelEvent::CrcError), text("CRC error"));
}

void tst_Translations::widgetsFollow()
{
    Widgets early;
    const QStringList english = early.say();
    speak("de");
    const QStringList german = Widgets().say();
    QCOMPARE(early.say(), german);
    QVERIFY(german.contains(text("Typ")));
    QVERIFY(german.contains(text("k. A.")));
    // What is written alike in both stands in the tree as names and numbers; the rest has changed.
    for (int i = 0; i < german.size(); ++i)
        if (german.at(i) == english.at(i) && english.at(i).contains(QLatin1Char(' ')))
            QVERIFY2(!english.at(i).contains(text(" the ")), qPrintable(english.at(i)));
    speak("en");
    QCOMPARE(early.say(), english);
}

void tst_Translations::whatApplicationsWroteStays()
{
    Widgets widgets;
    widgets.tree.headerItem()->setText(0, text("Signal"));
    widgets.tree.getToggleTypeColumnAction()->setText(text("Kind"));
    widgets.statistics.headerItem()->setText(1, text("n"));
    widgets.events.item(0, 0)->setText(text("never"));
    speak("de");
    QCOMPARE(widgets.tree.headerItem()->text(0), text("Signal"));
    QCOMPARE(widgets.tree.headerItem()->text(1), text("Typ"));
    QCOMPARE(widgets.tree.getToggleTypeColumnAction()->text(), text("Kind"));
    QCOMPARE(widgets.statistics.headerItem()->text(1), text("n"));
    QCOMPARE(widgets.events.item(0, 0)->text(), text("never"));
    speak("en");
}

QTEST_MAIN(tst_Translations)
#include "tst_translations.moc"
