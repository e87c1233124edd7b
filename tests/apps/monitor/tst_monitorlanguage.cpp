#include "language.h"
#include "mavlinkframes.h"
#include "preferencesdialog.h"
#include "retranslator.h"
#include "testbase.h"
#include "testfolder.h"
#include "testwindow.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDockWidget>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>
#include <QTabBar>

/** The window in another language: chosen while it is there it says what it says when it is made in it. */
class tst_monitorlanguage : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void aWindowFollows_data();
    void aWindowFollows();
    void wordsOfDevicesStay();
    void cleanup() { Language::install("en"); }

private:
    const TestFolder m_folder;
};

/** Whether it is what went wrong, which stays as it was logged. */
static bool isLogged(const QString& text)
{
    return text.contains("drive.tlog ") && (text.contains(" byte 1") || text.contains(" Byte 1"));
}

/** Every text that a user can meet in it, with where it is. */
static QStringList textsOf(const QWidget& window)
{
    static const char* const names[] = {
        "text",      "iconText",  "title",           "windowTitle",    "toolTip",
        "statusTip", "whatsThis", "placeholderText", "accessibleName", "accessibleDescription",
        "prefix",    "suffix",    "specialValueText"};
    QStringList texts;
    QList<const QObject*> objects{&window};
    for (const QObject* const object : window.findChildren<QObject*>())
        objects.append(object);
    for (const QObject* const object : std::as_const(objects)) {
        const QString place = QString::fromLatin1(object->metaObject()->className()) + ' ' + object->objectName();
        for (const char* const name : names)
            if (const QString text = object->property(name).toString(); !text.isEmpty() && !isLogged(text))
                texts.append(place + ", " + name + ": " + text);
        if (const auto* const box = qobject_cast<const QComboBox*>(object))
            for (int i = 0; i < box->count(); ++i)
                texts.append(place + ": " + box->itemText(i));
        if (const auto* const tabs = qobject_cast<const QTabBar*>(object))
            for (int i = 0; i < tabs->count(); ++i)
                texts.append(place + ": " + tabs->tabText(i));
        const auto* const view = qobject_cast<const QAbstractItemView*>(object);
        if (!view || !view->model() || qobject_cast<const QHeaderView*>(view))
            continue;
        for (int column = 0; column < view->model()->columnCount(); ++column) {
            for (const int role : {int(Qt::DisplayRole), int(Qt::ToolTipRole)})
                texts.append(place + ": " + view->model()->headerData(column, Qt::Horizontal, role).toString());
            // What was logged stays as it was.
            for (int row = 0; row < view->model()->rowCount(); ++row)
                if (!view->parentWidget()->inherits("EventPanel") || column != EventModel::EventColumn)
                    texts.append(place + ": " + view->model()->index(row, column).data().toString());
        }
    }
    texts.replaceInStrings(QRegularExpression("\\d[\\d.,]*"), "0"); // rates go on changing
    texts.sort();
    return texts;
}

/** The first of @p texts that are not among @p others. */
static QString without(QStringList texts, const QStringList& others)
{
    for (const QString& other : others)
        texts.removeOne(other);
    return texts.mid(0, 40).join('\n');
}

static void speak(Desk* desk, const char* language)
{
    Preferences preferences = desk->getPreferences();
    preferences.language = language;
    desk->setPreferences(preferences);
    desk->refresh();
    QCoreApplication::processEvents();
}

void tst_monitorlanguage::aWindowFollows_data()
{
    QTest::addColumn<QByteArray>("recording");
    const MavlinkScript script;
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a recording") << script.bytes("0:H1 1:H2 1:A3 2:A4~20 3:H5 9:H7 9:U8 10:H9");
}

void tst_monitorlanguage::aWindowFollows()
{
    QFETCH(QByteArray, recording);
    const QString path = m_folder.write("drive.tlog", recording);
    const auto prepare = [&](TestWindow* window) {
        bool isThere = recording.isEmpty() || window->play(path);
        if (!recording.isEmpty()) {
            isThere = isThere && waitFor([&]() { return window->findRow("HEARTBEAT", "type"); }, 30000);
            window->getTree()->setCurrentItem(window->findRow("HEARTBEAT"));
        }
        window->show();
        window->showPreferences();
        QCoreApplication::processEvents();
        window->getDesk()->refresh();
        return isThere;
    };
    Language::install("de");
    QStringList german;
    {
        TestWindow window;
        QVERIFY(prepare(&window));
        speak(window.getDesk(), "de");
        german = textsOf(window);
    }
    Language::install("en");
    TestWindow window;
    QVERIFY(prepare(&window));
    const QStringList english = textsOf(window);
    speak(window.getDesk(), "de");
    const QStringList followed = textsOf(window);
    const QString left = without(followed, german);
    QVERIFY2(left.isEmpty(), qPrintable(left + "\nin place of\n" + without(german, followed)));
    QVERIFY(german.join('\n').contains("Einstellungen"));
    speak(window.getDesk(), "en");
    // Back again, words that are one in German may have the mark for their key elsewhere.
    const auto plain = [](QStringList texts) {
        return texts.replaceInStrings("&", QString()).join('\n').toLower().split('\n');
    };
    QCOMPARE(without(plain(textsOf(window)), plain(english)), QString());
}

void tst_monitorlanguage::wordsOfDevicesStay()
{
    QWidget window;
    QLabel* const label = new QLabel("Playback", &window);
    QGroupBox* const box = new QGroupBox("Events", &window);
    QLineEdit* const line = new QLineEdit("Time", &window);
    QAction* const action = new QAction("&Quit", &window);
    Language::install("de");
    QCOMPARE(label->text() + ", " + box->title() + ", " + line->text() + ", " + action->text(),
             QString("Playback, Events, Time, &Beenden"));
}

QTEST_MAIN(tst_monitorlanguage)
#include "tst_monitorlanguage.moc"
