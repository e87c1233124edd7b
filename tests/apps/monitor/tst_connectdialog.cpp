#include "addressform.h"
#include "connectdialog.h"
#include "container.h"
#include "definitions.h"
#include "filefilters.h"
#include "mavlinkframes.h"
#include "ratechoice.h"
#include "shellrun.h"
#include "testbase.h"
#include "testfolder.h"

#include <QComboBox>
#include <QLabel>

/** What asks for a source, and what else tells which there are. */
class tst_connectdialog : public TestBase
{
    Q_OBJECT

private:
    const TestFolder m_folder;

    /** What an address says, whether it was told or is so anyway. */
    static QStringList valuesOf(const QString& text)
    {
        InputAddress address;
        QString error;
        if (!InputAddress::parse(text, &address, &error))
            return {error};
        QStringList values{address.kind->title};
        for (const InputField& field : address.kind->getFields())
            values.append(address.getValue(field.name));
        return values;
    }

private Q_SLOTS:
    void everyKindOfInputIsToldOfEverywhere()
    {
        SourceFactory factory;
        ConnectDialog dialog(&factory, ConnectDialog::Opener());
        const QComboBox* const offered = dialog.findChild<AddressForm*>()->findChild<QComboBox*>();
        QStringList texts;
        for (const char* command :
             {"corvel-dump --help", "corvel-monitor --help", "cat corvel-dump.1", "cat corvel-monitor.1"})
            texts.append(QString::fromUtf8(ShellRun(command, CORVEL_MAN_PAGES).output).replace("\\-", "-"));
        for (const InputKind* kind : InputKind::getAll()) {
            for (const QString& text : texts) {
                QVERIFY2(text.contains(QString("\n  %1\n").arg(kind->usage)) ||
                             text.contains(QString("\n.B %1\n").arg(kind->usage)),
                         qPrintable(kind->usage + text));
                QVERIFY2(text.contains(kind->title) && text.contains(kind->example), qPrintable(kind->title + text));
            }
            QVERIFY2(offered->findText(kind->getTitle()) >= 0, kind->title);
            SourceOptions options;
            options.address = kind->example;
            dialog.setOptions(options);
            QCOMPARE(valuesOf(dialog.getOptions().address), valuesOf(kind->example));
        }
    }

    void everyDemonstrationIsToldOf()
    {
        const QString help = QString::fromUtf8(ShellRun("corvel-monitor --help", CORVEL_MAN_PAGES).output).simplified();
        const QString page = QString::fromUtf8(ShellRun("cat corvel-monitor.1", CORVEL_MAN_PAGES).output).simplified();
        for (const Demonstration& each : Demonstration::getAll()) {
            QVERIFY2(help.contains(QString("%1, %2").arg(each.name, each.help)), each.name);
            QVERIFY2(page.contains(QString(".B %1 is %2").arg(each.name, each.help)), each.name);
            QVERIFY(Demonstration::find(each.name) == &each);
        }
    }

    void everyKindOfFileIsOffered()
    {
        const Definitions definitions;
        QString expected = FileFilters::recordings().section(";;", 0, 0);
        QVERIFY2(expected.startsWith("Recordings (*.") && expected.contains(" *.osi "), qPrintable(expected));
        for (const Container* container : Container::getAll())
            expected += QString(";;%1 (%2)").arg(container->getTitle(), container->filePatterns);
        QCOMPARE(FileFilters::recordings(), expected + ";;All files (*)");
        expected = FileFilters::definitions(definitions).section(";;", 0, 0);
        QVERIFY2(expected.startsWith("Definitions (*.xml *.proto "), qPrintable(expected));
        for (const Definitions::FileKind& kind : definitions.getFileKinds())
            expected += QString(";;%1 (%2)").arg(kind.title, kind.patterns.join(' '));
        QCOMPARE(FileFilters::definitions(definitions), expected + ";;All files (*)");

        const QStringList names{"a.xml", "folder/A.XML", "a.proto", "a.bin", "a.tlog", "a", "tcp:xml:1"};
        QString found;
        for (const QString& name : names)
            found += FileFilters::isDefinitions(definitions, name) ? 'x' : '-';
        QCOMPARE(found, QString("xxx----"));
    }

    void saysWhatIsWrongInPlace()
    {
        SourceFactory factory;
        int opened = 0;
        ConnectDialog dialog(&factory, [&](const SourceOptions& options, QString* error) {
            ++opened;
            SourceParts parts;
            return factory.create(options, &parts, error);
        });
        SourceOptions options;
        options.address = "udp:[::1]:14560";
        dialog.setOptions(options);
        QCOMPARE(dialog.getOptions().address, options.address);
        options.address = m_folder.filePath("missing.tlog");
        dialog.setOptions(options);
        dialog.accept();
        QCOMPARE(dialog.result(), 0);
        QLabel* shown = nullptr;
        for (QLabel* label : dialog.findChildren<QLabel*>())
            if (label->accessibleName() == "What is wrong")
                shown = label;
        QVERIFY(shown->text().contains("missing.tlog") && !shown->isHidden());

        options.address = "udp:0.0.0.0:14561";
        options.definitions =
            m_folder.write("car.proto", "syntax = \"proto3\";\nmessage Car {\n  double speed = \"x\";\n}\n");
        dialog.setOptions(options);
        QVERIFY2(shown->text().contains("car.proto:3:"), qPrintable(shown->text()));
        options.definitions =
            m_folder.write("bus.proto", "syntax = \"proto3\";\nmessage Bus {\n  double speed = 1;\n}\n");
        options.typeName = "Bus";
        options.framing = "datagram";
        dialog.setOptions(options);
        QVERIFY(shown->isHidden());
        RateChoice* const rate = dialog.findChild<RateChoice*>();
        QVERIFY(rate->isHidden());
        SourceOptions recording;
        recording.address = m_folder.write("a.bin", MavlinkScript().bytes("H1 H2 H3"));
        recording.rate = 50;
        dialog.setOptions(recording);
        QVERIFY(!rate->isHidden() && dialog.getOptions().rate == 50); // such messages have no times
        recording.address = m_folder.write("a.tlog", timed(1400000000000000, MavlinkScript().bytes("H1")) +
                                                         timed(1400000001000000, MavlinkScript().bytes("H2")));
        dialog.setOptions(recording);
        QVERIFY(rate->isHidden());
        dialog.setOptions(options);
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(opened, 2);
    }
};

QTEST_MAIN(tst_connectdialog)
#include "tst_connectdialog.moc"
