#include "mavlinkframes.h"
#include "placeslider.h"
#include "playbackbar.h"
#include "playbacktime.h"
#include "testbase.h"
#include "testfolder.h"
#include "testwindow.h"
#include "timeline.h"
#include "toldrows.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>

namespace
{

const qint64 Second = 1000000;

/** The real window, with what its playback bar has. */
struct BarWindow : TestWindow
{
    TimeLine* line() const { return findChild<TimeLine*>(); }
    PlaceSlider* slider() const { return findChild<PlaceSlider*>(); }
    RecordingOverview* overview() const { return Desk::getOverview(getDesk()->getChosenSource()); }
    bool open(const QString& path)
    {
        resize(1200, 700);
        return play(path) &&
               waitFor([this]() { return overview() && overview()->isComplete() && line()->isVisible(); });
    }
    /** Where the recording is, from its start: "12.5 s", and whether it goes on from there. */
    QString place() const
    {
        const StreamSource* const source = getSource();
        const QString text = QString("%1 s").arg(double(source->getCurrentTime() - source->getStartTime()) / Second);
        return source->getState() == StreamSource::Running && source->isPaused() ? text : text + " and on";
    }
    /** A place in the time line or the slider, as a part of its length. */
    QPoint at(double part) const
    {
        const int handle = slider()->style()->pixelMetric(QStyle::PM_SliderLength, nullptr, slider());
        return QPoint(handle / 2 + qRound(part * (slider()->width() - handle)), 4);
    }
    void press(Qt::Key key) { QTest::keyClick(slider(), key); }
};

} // namespace

/** Ways through a recording, and the line that shows what there is in it. */
class tst_playbackbar : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theTimeLineTellsWhatThereIs();
    void manyGapsTellHowMuchIsMissing();
    void clicksGoThere();
    void keysStepAndPlay();
    void gapsAreGoneToOneAfterAnother();
    void itLoops();
    void withoutTimesThereIsARate();

private:
    const MavlinkScript m_script;
    const TestFolder m_folder;
    QString
        m_flight; // HEARTBEAT ten times a second for 100 s, without 20 to 22 and 60 to 65; ATTITUDE once, damage at 80
};

void tst_playbackbar::initTestCase()
{
    QByteArray bytes;
    for (int i = 0; i <= 1000; ++i) {
        if ((i >= 200 && i < 220) || (i >= 600 && i < 650))
            continue;
        bytes += m_script.bytes(QString("%1:H%2").arg(i * 100000).arg(1 + i % 255));
        if (i == 400)
            bytes += m_script.bytes("40050000:A7");
        if (i == 800)
            bytes += m_script.bytes("80050000:A7~20");
        if (i == 700) {
            MavlinkEncoder says(m_script.info(253));
            says.set("severity", 3);
            says.setText("text", "no compass");
            bytes += timed(MavlinkScript::Noon + 70050000, says.toFrame(frameHeader(2, 9)));
        }
    }
    m_flight = m_folder.write("flight.tlog", bytes);
}

void tst_playbackbar::theTimeLineTellsWhatThereIs()
{
    BarWindow window;
    QVERIFY(window.open(m_flight));
    const auto told = [&](double part) {
        QStringList lines = window.line()->describe(window.at(part).x()).split('\n');
        lines.removeFirst(); // the time, to a pixel
        return lines.join(" | ");
    };
    QVERIFY2(window.line()->describe(window.at(0).x()).startsWith("2023-11-14 22:13:20.000 UTC   0:00\n"),
             qPrintable(window.line()->describe(window.at(0).x())));
    QVERIFY(!told(0.1).contains("gap") && told(0.1).endsWith(" messages/s"));
    QCOMPARE(told(0.21), QString("0 messages/s | gap of HEARTBEAT 1:1: 2.1 s"));
    QVERIFY2(told(0.8).contains("damaged: 1 | Warning: checksum failure"), qPrintable(told(0.8)));
    QVERIFY2(told(0.7).endsWith("Error from 1:1: no compass"), qPrintable(told(0.7)));
    // What is chosen has a curve and gaps of its own.
    const StreamIdentities& identities = window.getDesk()->getChosenSource()->getIdentities();
    window.getDesk()->chooseTypes({{identities.getRows().at(1).info, "1:1"}});
    QVERIFY(told(0.4).contains("ATTITUDE 1:1: "));
    QCOMPARE(told(0.21), QString("0 messages/s | ATTITUDE 1:1: 0 /s"));
    QCOMPARE(int(window.line()->getContents().gaps.size()), 0);
    window.getDesk()->chooseTypes({});
    QCOMPARE(int(window.line()->getContents().gaps.size()), 2);
}

void tst_playbackbar::manyGapsTellHowMuchIsMissing()
{
    QSlider slider(Qt::Horizontal);
    TimeLine line(&slider);
    line.resize(1100, line.sizeHint().height());
    TimeLine::Contents contents;
    contents.end = 1000 * Second;
    for (qint64 second = 0; second < 400; ++second) // a tenth, and again from 800 on a hundredth of a pixel
        contents.gaps.append({second * Second, second * Second + Second / 10, 0});
    contents.gaps.append({500 * Second, 600 * Second, 0});
    contents.gaps.append({800 * Second, 800 * Second + 1, 0});
    line.setContents(contents);
    const QImage picture = line.grab().toImage();
    const auto strength = [&](int second) { // how far the colour is from that of no gap
        const auto at = [&](int x) { return picture.pixelColor(x, picture.height() - 11); };
        const int handle = slider.style()->pixelMetric(QStyle::PM_SliderLength, nullptr, &slider);
        const QColor colour = at(handle / 2 + (picture.width() - handle) * second / 1000);
        return qAbs(colour.blue() - at(picture.width() * 9 / 10).blue());
    };
    QVERIFY(strength(700) == 0 && strength(800) > 20);
    QVERIFY(strength(200) > strength(800) && strength(550) > strength(200) + 20);
}

void tst_playbackbar::clicksGoThere()
{
    BarWindow window;
    QVERIFY(window.open(m_flight));
    QTest::mouseClick(window.line(), Qt::LeftButton, {}, window.at(0.5));
    EVENTUALLY(window.place().startsWith("50") || window.place().startsWith("49."));
    QVERIFY(!window.place().endsWith("on")); // as fast as possible, the end would be all there is to see
    QTest::mouseClick(window.slider(), Qt::LeftButton, {}, window.at(0.25));
    EVENTUALLY(window.place().startsWith("25") || window.place().startsWith("24."));
    // A drag goes there when it ends.
    QTest::mousePress(window.line(), Qt::LeftButton, {}, window.at(0.5));
    QTest::mouseMove(window.line(), window.at(0.75));
    QVERIFY(window.place().startsWith("2"));
    QTest::mouseRelease(window.line(), Qt::LeftButton, {}, window.at(0.75));
    EVENTUALLY(window.place().startsWith("75") || window.place().startsWith("74."));
    // What is beyond the end is told, and nothing goes there.
    QSignalSpy said(window.getDesk(), &Desk::said);
    QLineEdit* const time = window.findChild<PlaybackBar*>()->findChild<QLineEdit*>();
    for (const char* typed : {"+2:00", "22:13:20"}) {
        time->setText(typed);
        QTest::keyClick(time, Qt::Key_Return);
    }
    QVERIFY2(said.first().first().toString().endsWith("from 2023-11-14 22:13:20.000 to 2023-11-14 22:15:00.000 UTC."),
             qPrintable(said.first().first().toString()));
    QCOMPARE(said.size(), 2);
    QCOMPARE(said.last().first().toString(), QString());
    EVENTUALLY(window.place().startsWith("0"));
}

void tst_playbackbar::keysStepAndPlay()
{
    BarWindow window;
    QVERIFY(window.open(m_flight));
    window.getDesk()->jumpTo(window.getSource()->getStartTime() + 40 * Second);
    EVENTUALLY_IS(window.place(), "40 s");
    for (const char* place : {"40.05 s", "40.1 s"}) {
        window.press(Qt::Key_Right);
        EVENTUALLY_IS(window.place(), place);
    }
    for (const char* place : {"40.05 s", "40 s", "39.9 s"}) {
        window.press(Qt::Key_Left);
        EVENTUALLY_IS(window.place(), place);
    }
    // Over a gap, and at the start.
    window.getDesk()->jumpTo(window.getSource()->getStartTime() + 65 * Second);
    EVENTUALLY_IS(window.place(), "65 s");
    window.findAction("Step Back")->trigger();
    EVENTUALLY_IS(window.place(), "59.9 s");
    window.getDesk()->jumpTo(window.getSource()->getStartTime());
    EVENTUALLY_IS(window.place(), "0 s");
    QSignalSpy jumps(window.getSource(), &StreamSource::sought);
    window.press(Qt::Key_Left);
    EVENTUALLY(jumps.size() == 1);
    EVENTUALLY_IS(window.place(), "0 s");
    window.press(Qt::Key_Space);
    EVENTUALLY_IS(window.place(), "100 s and on");
}

void tst_playbackbar::gapsAreGoneToOneAfterAnother()
{
    BarWindow window;
    QVERIFY(window.open(m_flight));
    MessageStatisticsWidget* const whole = window.find<StatisticsPanel>()->getWholeStatistics();
    QVERIFY(whole && whole->isVisibleTo(window.find<StatisticsPanel>()->getWidget()));
    QLineEdit* const filter = window.find<StatisticsPanel>()->getFilter();
    filter->setText("1:1 hear");
    QCOMPARE(shownRows(whole->invisibleRootItem()), QString("corvel, .HEARTBEAT"));
    filter->clear();
    QVector<QTreeWidgetItem*> gaps;
    for (QTreeWidgetItemIterator item(whole); *item; ++item)
        if ((*item)->text(0).startsWith("HEARTBEAT") || (*item)->text(0) == "Gaps")
            whole->expandItem(*item);
    for (QTreeWidgetItemIterator item(whole); *item; ++item)
        for (QTreeWidgetItem* parent = *item; parent; parent = parent->parent())
            if (auto* const row = dynamic_cast<MessageStatisticsTreeWidgetItem*>(parent))
                if (row->getGap(*item) && !gaps.contains(*item))
                    gaps.append(*item);
    QCOMPARE(int(gaps.size()), 2);
    const QString counted = window.countedTypes();
    QStringList places;
    for (QTreeWidgetItem* const gap : gaps) {
        QSignalSpy jumps(window.getSource(), &StreamSource::sought);
        Q_EMIT whole->itemDoubleClicked(gap, 0);
        EVENTUALLY(jumps.size() == 1);
        EVENTUALLY(!window.place().endsWith("on"));
        places.append(window.place());
    }
    places.sort();
    QCOMPARE(places.join(' '), QString("19.9 s 59.9 s"));
    QCOMPARE(window.find<StatisticsPanel>()->getWholeStatistics(), whole);
    // While what was played begins anew.
    EVENTUALLY(window.countedTypes() != counted);
    window.find<StatisticsPanel>()->setWhole(false);
    QVERIFY(window.getStatistics()->isVisibleTo(window.find<StatisticsPanel>()->getWidget()));
    window.getSources()->close(window.getDesk()->getChosenSource());
    QVERIFY(!window.find<StatisticsPanel>()->getWholeStatistics());
}

void tst_playbackbar::itLoops()
{
    BarWindow window;
    QVERIFY(window.open(m_flight));
    QSignalSpy jumps(window.getSource(), &StreamSource::sought);
    window.findAction("Loop")->trigger();
    EVENTUALLY(jumps.size() >= 2);
    window.findAction("Loop")->trigger();
    EVENTUALLY_IS(window.place(), "100 s and on");
}

void tst_playbackbar::withoutTimesThereIsARate()
{
    BarWindow window;
    QVERIFY(window.play(m_folder.write("raw", m_script.bytes("H1 A2 H3 A4"))));
    QComboBox* rate = nullptr;
    for (QComboBox* const box : window.findChildren<QComboBox*>())
        if (box->accessibleName() == "Rate of playback")
            rate = box;
    EVENTUALLY(rate->isVisible());
    const auto count = [&]() { return window.getSource()->getCounters().getMessageCount(); };
    for (const quint64 expected : {1, 2, 3}) {
        window.findAction("Step One Message")->trigger();
        EVENTUALLY(count() == expected);
    }
    QVERIFY(window.getSource()->isPaused());
    rate->setCurrentText("100 messages/s");
    Q_EMIT rate->activated(rate->currentIndex());
    QCOMPARE(window.getDesk()->getChosenSource()->getPlayback().messagesPerSecond, 100.0);
    window.findAction("Play or Pause")->trigger();
    EVENTUALLY(count() == 4);
}

QTEST_MAIN(tst_playbackbar)
#include "tst_playbackbar.moc"
