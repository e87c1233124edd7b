#include "corvel.h"
#include "fieldvaluelabel.h"
#include "mavlinkdialect.h"
#include "mavlinkencoder.h"
#include "messagetreewidget.h"
#include "messagewidget.h"
#include "plotseries.h"
#include "testbase.h"
#include "testwindow.h"
#include "waitfor.h"
#include "watch.h"

#include <QComboBox>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>
#include <QtEndian>

/** What jumps, pauses, other sources and other settings leave as the user had it, and what they must not. */
class tst_monitorplayback : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aJumpKeepsWhatWasChosenAndForgetsValues();
    void pausedViewsAreWrittenAsTheSettingsSay();
    void hiddenDataIsHiddenEverywhere();
    void whatWasChosenSurvivesARestart();
    void aSenderStaysChosenWhenItGetsAnotherName();
    void whatCannotBeOpenedIsToldInOneBox();
    void recordingsDoNotOverwriteWhatIsInUse();

private:
    QByteArray record(quint32 id, int second, const char* field, double value) const;
    QString writeFile(const QString& name, const QByteArray& bytes) const;
    bool openFlight(TestWindow* window) const;

    std::unique_ptr<MavlinkDialect> m_dialect;
    QTemporaryDir m_folder;
    QString m_flight; // ATTITUDE at seconds 0 to 4 with roll 0.12345 + second, HEARTBEAT at 0 to 9
};

static const qint64 Start = 1400000000; // seconds since 1970

QByteArray tst_monitorplayback::record(quint32 id, int second, const char* field, double value) const
{
    MavlinkEncoder encoder(m_dialect->find(id));
    encoder.set(field, value);
    MavlinkEncoder::FrameHeader header;
    header.sequence = quint8(second);
    char time[8];
    qToBigEndian(quint64(Start + second) * 1000000, time);
    return QByteArray(time, sizeof time) + encoder.toFrame(header);
}

QString tst_monitorplayback::writeFile(const QString& name, const QByteArray& bytes) const
{
    QFile file(m_folder.filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
}

void tst_monitorplayback::initTestCase()
{
    m_dialect.reset(MavlinkDialect::loadBuiltIn());
    QByteArray bytes;
    for (int second = 0; second < 10; ++second) {
        if (second < 5)
            bytes += record(30, second, "roll", second + 0.12345);
        bytes += record(0, second, "type", 2);
    }
    m_flight = writeFile("flight.tlog", bytes);
}

// What is set for the whole program is as usual again afterwards.
struct UsualSettings
{
    ~UsualSettings()
    {
        Corvel::setFloatingPointDecimals(-1);
        Corvel::setConfidentialInformationDisplayEnabled(false);
    }
};

static bool isOver(const TestWindow& window)
{
    return window.getSource()->getState() == StreamSource::Finished;
}

bool tst_monitorplayback::openFlight(TestWindow* window) const
{
    StreamSource::Playback playback;
    playback.factor = 0;
    window->setPlayback(playback);
    window->show();
    return window->openAddress(m_flight) &&
           waitFor([&]() { return isOver(*window) && window->getTree()->topLevelItemCount() == 2; });
}

static QTreeWidgetItem* findRow(const TestWindow& window, const QString& type, const QString& field = QString())
{
    for (int i = 0; i < window.getTree()->topLevelItemCount(); ++i) {
        QTreeWidgetItem* const row = window.getTree()->topLevelItem(i);
        for (int j = 0; row->text(0) == type && j < row->childCount(); ++j)
            if (field.isEmpty() || row->child(j)->text(0) == field)
                return field.isEmpty() ? row : row->child(j);
    }
    return nullptr;
}

// What tree, form, watch and plot say of ATTITUDE.roll: "0.1 rad | 0.1 rad | 0.1 rad | 0.1 rad".
static QString rollOf(const TestWindow& window)
{
    const QTreeWidgetItem* const row = findRow(window, "ATTITUDE", "roll");
    QStringList texts(row ? row->text(window.getTree()->getColumnIndex(MessageTreeWidget::ValueColumn)) : "no row");
    for (const MessageWidget* form : window.findChildren<MessageWidget*>())
        if (form->windowTitle() == "ATTITUDE")
            texts.append(form->findChildren<FieldValueLabel*>().at(1)->text());
    for (const Watch* watch : window.getWatches()->getWatches())
        texts.append(watch->getText());
    const auto& series = window.getPlot()->getSeries();
    for (const auto& one : series)
        texts.append(one->getValueText());
    return texts.join(" | ");
}

static void showRollEverywhere(TestWindow* window)
{
    window->find<TypePanel>()->chooseWhenSeen({"ATTITUDE"});
    window->getWatches()->pin("corvel/ATTITUDE/roll");
    Preferences preferences;
    preferences.watchTimeOut = 0;
    window->getDesk()->setPreferences(preferences);
    window->getPlot()->plot("corvel/ATTITUDE/roll");
}

static void jump(TestWindow* window, int second)
{
    StreamSource* const source = window->getSources()->getSession(0)->getSource();
    QSignalSpy jumps(source, &StreamSource::sought);
    source->seek((Start + second) * 1000000);
    QVERIFY(waitFor([&]() { return jumps.size() == 1 && source->getState() == StreamSource::Finished; }));
}

void tst_monitorplayback::aJumpKeepsWhatWasChosenAndForgetsValues()
{
    TestWindow window;
    showRollEverywhere(&window);
    QVERIFY(openFlight(&window));
    const QString all = "4.12345 rad | 4.12345 rad | 4.12345 rad | 4.12345 rad";
    QVERIFY(waitFor([&]() { return rollOf(window) == all; }));
    QAbstractItemModel* const types = window.getTypes();
    QCOMPARE(types->index(1, 0).data().toString(), QString("HEARTBEAT"));
    QVERIFY(types->setData(types->index(1, 0), Qt::Unchecked, Qt::CheckStateRole));
    QTreeWidgetItem* const roll = findRow(window, "ATTITUDE", "roll");
    window.getTree()->setCurrentItem(roll);

    // Behind the last ATTITUDE there is none to show, and what is of another time would be a lie.
    jump(&window, 6);
    QVERIFY(waitFor([&]() { return types->index(1, 2).data().toString() == "4"; }));
    QCOMPARE(types->index(0, 2).data().toString(), QString("0"));
    QVERIFY2(rollOf(window).startsWith(" | N/A | N/A | "), qPrintable(rollOf(window)));
    jump(&window, 2);
    QVERIFY(waitFor([&]() { return rollOf(window) == all; }));
    QCOMPARE(types->index(0, 2).data().toString(), QString("3"));
    QCOMPARE(window.getTree()->currentItem(), roll);
    QVERIFY(!findRow(window, "HEARTBEAT"));
    // The newest message is there at once with its type, without waiting for the next.
    QVERIFY(types->setData(types->index(1, 0), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(!findRow(window, "HEARTBEAT", "type")->text(2).isEmpty());
}

void tst_monitorplayback::pausedViewsAreWrittenAsTheSettingsSay()
{
    const UsualSettings usual;
    TestWindow window;
    showRollEverywhere(&window);
    QVERIFY(openFlight(&window));
    QVERIFY(waitFor([&]() { return rollOf(window).startsWith("4.12345 rad | 4.12345 rad | 4.12345 rad"); }));
    window.setViewsPaused(true);
    jump(&window, 6);
    Preferences preferences;
    preferences.decimals = 2;
    window.getDesk()->setPreferences(preferences);
    // The values of the pause, with other decimals.
    QCOMPARE(rollOf(window), QString("4.12 rad | 4.12 rad | 4.12 rad | 4.12 rad"));
    window.setViewsPaused(false);
    QVERIFY2(rollOf(window).startsWith(" | N/A | N/A | "), qPrintable(rollOf(window)));
    // Watches alone time out, and not where the recording itself stands still.
    preferences.watchTimeOut = 0.1;
    window.getDesk()->setPreferences(preferences);
    jump(&window, 2);
    const auto hasTimedOut = [&]() { return rollOf(window).section(" | ", 2, 2) == "N/A"; };
    QVERIFY(waitFor([&]() { return rollOf(window).startsWith("4.12 rad | 4.12 rad | 4.12 rad"); }));
    QVERIFY(!waitFor(hasTimedOut, 400));
    SourceSession* const session = window.getSources()->getSession(0);
    session->setPlayback(StreamSource::Playback()); // as fast as it was recorded, a message a second
    session->getSource()->seek(Start * 1000000);
    QVERIFY(waitFor([&]() { return rollOf(window).startsWith("0.12 rad | 0.12 rad") && hasTimedOut(); }));
}

void tst_monitorplayback::hiddenDataIsHiddenEverywhere()
{
    const UsualSettings usual;
    TestWindow window;
    showRollEverywhere(&window);
    QVERIFY(openFlight(&window));
    QVERIFY(waitFor([&]() { return rollOf(window).startsWith("4.12345 rad | 4.12345 rad | 4.12345 rad"); }));
    QVERIFY(window.loadDialect(writeFile("secret.xml", "<mavlink><messages><message id=\"30\" name=\"ATTITUDE\">"
                                                       "<field type=\"uint32_t\" name=\"time_boot_ms\">T</field>"
                                                       "<field type=\"float\" name=\"roll\" units=\"rad\">R</field>"
                                                       "<field type=\"float\" name=\"pitch\">P</field>"
                                                       "<field type=\"float\" name=\"yaw\">Y</field>"
                                                       "<field type=\"float\" name=\"rollspeed\">R</field>"
                                                       "<field type=\"float\" name=\"pitchspeed\">P</field>"
                                                       "<field type=\"float\" name=\"yawspeed\">Y</field>"
                                                       "</message></messages></mavlink>"),
                               QString()));
    window.getWatches()->removeAll();
    window.getPlot()->removeAll();
    window.getWatches()->pin("secret/ATTITUDE/roll");
    window.getPlot()->plot("secret/ATTITUDE/roll");
    jump(&window, 0);
    const QString all = "4.12345 rad | 4.12345 rad | 4.12345 rad | 4.12345 rad";
    QVERIFY2(waitFor([&]() { return rollOf(window) == all; }), qPrintable(rollOf(window)));

    QVERIFY(window.loadAnnotations(writeFile(
        "secret.json", "{\"messages\": {\"ATTITUDE\": {\"fields\": {\"roll\": {\"confidential\": true}}}}}")));
    QCOMPARE(rollOf(window), QString("no row | Hidden data | Hidden data"));
    window.getDesk()->setConfidentialShown(true);
    // Of what was plotted before, nothing was kept.
    QVERIFY2(rollOf(window).startsWith("4.12345 rad | 4.12345 rad | 4.12345 rad"), qPrintable(rollOf(window)));
    QCOMPARE(int(window.getPlot()->getSeries().size()), 1);
}

void tst_monitorplayback::whatWasChosenSurvivesARestart()
{
    const QString path = m_folder.filePath("restart.ini");
    {
        TestWindow window;
        showRollEverywhere(&window);
        window.getPlot()->plot("later/ENGINE/temperature");
        window.getTree()->setColumns({MessageTreeWidget::NameColumn, MessageTreeWidget::ValueColumn});
        window.getWatches()->getWatches().first()->setName("bank");
        QVERIFY(openFlight(&window));
        QVERIFY(waitFor([&]() { return rollOf(window).count('|') == 3; }));
        QAbstractItemModel* const types = window.getTypes();
        QVERIFY(types->setData(types->index(1, 0), Qt::Unchecked, Qt::CheckStateRole));
        QSettings settings(path, QSettings::IniFormat);
        window.saveSettings(settings);
    }
    TestWindow window;
    QSettings settings(path, QSettings::IniFormat);
    window.restoreSettings(settings);
    QCOMPARE(window.getTree()->getColumns().size(), 2);
    QCOMPARE(window.getWatches()->getWatches().first()->getName(), QString("bank"));
    window.show();
    StreamSource::Playback playback;
    playback.factor = 0;
    window.setPlayback(playback);
    QVERIFY(window.openAddress(m_flight));
    const QString all = "4.12345 rad | 4.12345 rad | 4.12345 rad | 4.12345 rad";
    QVERIFY2(waitFor([&]() { return rollOf(window) == all; }), qPrintable(rollOf(window)));
    QVERIFY(!findRow(window, "HEARTBEAT"));
    // Its type is still to come, in this run or another.
    QSettings again(m_folder.filePath("again.ini"), QSettings::IniFormat);
    window.saveSettings(again);
    QCOMPARE(again.value("plot/plotted").toStringList(), QStringList() << "corvel/ATTITUDE/roll"
                                                                       << "later/ENGINE/temperature");
}

void tst_monitorplayback::aSenderStaysChosenWhenItGetsAnotherName()
{
    TestWindow window;
    window.getPlot()->plot("corvel/ATTITUDE/roll");
    QVERIFY(openFlight(&window));
    QComboBox* senders = nullptr;
    for (QComboBox* box : window.findChildren<QComboBox*>())
        if (box->accessibleName() == "Sender shown")
            senders = box;
    QVERIFY(senders && waitFor([&]() { return senders->count() == 2; }));
    senders->setCurrentIndex(1);
    const QString name = senders->currentText();
    QCOMPARE(window.getDesk()->getLatest()->getSender(), name);
    QVERIFY(window.openAddress(writeFile("other.tlog", record(30, 0, "roll", 7))));
    QCOMPARE(senders->currentText(), name + " @ flight.tlog");
    QCOMPARE(window.getDesk()->getLatest()->getSender(), senders->currentText());
    QVERIFY(waitFor([&]() { return window.getPlot()->getSeries().size() == 2; }));
    jump(&window, 0);
    QCOMPARE(int(window.getPlot()->getSeries().size()), 2); // and no third of the old name
    QCOMPARE(window.getPlot()->getSeries().front()->getSender(), senders->currentText());
    // The tree shows the chosen one only, also where another source sent later.
    QVERIFY(waitFor([&]() { return rollOf(window).startsWith("4.12345 rad"); }));
}

void tst_monitorplayback::whatCannotBeOpenedIsToldInOneBox()
{
    TestWindow window;
    QVERIFY(openFlight(&window));
    QVERIFY(!window.openAll({writeFile("a.txt", "a letter"), m_flight, m_folder.filePath("missing"), m_folder.path(),
                             "udp:0.0.0.0:99999"}));
    QCOMPARE(window.getSources()->getCount(), 3);       // what a file is, is found out when it is read
    QCOMPARE(window.getTree()->topLevelItemCount(), 2); // and what is shown stays
    const QList<QMessageBox*> boxes = window.findChildren<QMessageBox*>();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.first()->text().count('\n'), 2);
    QVERIFY(boxes.first()->text().contains("missing"));
    QVERIFY(waitFor([&]() { return window.getLastProblem().contains("a.txt: not recognised"); }));
    const QString state = window.getSources()->getSession(1)->getStateText();
    QVERIFY2(state.startsWith("failed: not recognised: it begins with 61 20"), qPrintable(state));
    boxes.first()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void tst_monitorplayback::recordingsDoNotOverwriteWhatIsInUse()
{
    TestWindow window;
    QVERIFY(openFlight(&window));
    const QString copy = writeFile("copy.tlog", record(0, 0, "type", 2));
    QVERIFY(window.openAddress(copy));
    SourceModel* const sources = window.getSources();
    const QString link = m_folder.filePath("link.tlog");
    QVERIFY(QFile::link(m_flight, link));
    QString error;
    QVERIFY(!sources->startRecording(sources->getSession(1), link, &error));
    QVERIFY2(error.contains("link.tlog"), qPrintable(error));
    const QString path = m_folder.filePath("recorded.tlog");
    QVERIFY(sources->startRecording(sources->getSession(0), path, &error));
    QVERIFY(!sources->startRecording(sources->getSession(1), path, &error));
    QVERIFY(sources->getSession(0)->getRecorder().isRecording());
    sources->getSession(0)->stopRecording();
}

QTEST_MAIN(tst_monitorplayback)
#include "tst_monitorplayback.moc"
