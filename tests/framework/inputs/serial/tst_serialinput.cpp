#include "byteinput.h"
#include "pseudoterminal.h"
#include "testbase.h"
#include "waitfor.h"

#include <QTemporaryDir>

#include <memory>
#include <thread>

class TestSerialInput : public TestBase
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("ttyTest"));

    static std::unique_ptr<ByteInput> inputFor(const QString& text)
    {
        InputAddress address;
        QString error;
        if (!InputAddress::parse(text, &address, &error))
            qWarning("%s", qPrintable(error));
        return std::unique_ptr<ByteInput>(ByteInput::create(address));
    }

    static QString openError(const QString& text)
    {
        const auto input = inputFor(text);
        return input->open() ? QStringLiteral("open") : input->getErrorString();
    }

private Q_SLOTS:
    void everyByteComesAsItWasSent()
    {
        PseudoTerminal device(m_path);
        QVERIFY(device.plugIn());
        const auto input = inputFor(QStringLiteral("serial:%1?baud=115200&format=8E2&flow=none").arg(m_path));
        QVERIFY2(input->open(), qPrintable(input->getErrorString()));
        QVERIFY(input->isLive() && !input->isDatagram());
        const termios settings = device.settings();
        QCOMPARE(cfgetispeed(&settings), speed_t(B115200));
        QVERIFY(settings.c_cflag & CSTOPB);
        QByteArray piece;
        QCOMPARE(input->read(&piece, 0), ByteInput::Nothing);

        // Terminals make other things of line ends, interrupts, XON and XOFF, and keep only so much at once.
        QByteArray content;
        for (int i = 0; i < 100000; ++i)
            content.append(char(i + i / 256));
        QByteArray received;
        int sent = 0;
        QVERIFY(waitFor([&] {
            sent += device.send(content.mid(sent));
            if (input->read(&piece, 0) == ByteInput::Data)
                received += piece;
            return received.size() >= content.size();
        }));
        QVERIFY(received == content);
    }

    void aDeviceThatIsUnpluggedCanBeOpenedWhenItIsBack()
    {
        PseudoTerminal device(m_path);
        const QString address = QStringLiteral("serial:") + m_path;
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(openError(address), address + QStringLiteral(": there is no such serial port"));
            QVERIFY(device.plugIn());
            const auto input = inputFor(address);
            QVERIFY2(input->open(), qPrintable(input->getErrorString()));
            QCOMPARE(device.send("last words"), 10);
            QByteArray piece;
            QCOMPARE(input->read(&piece, 10000), ByteInput::Data);
            QCOMPARE(piece, QByteArray("last words"));
            std::thread unplugging([&] { device.unplug(); });
            QCOMPARE(input->read(&piece, 10000), ByteInput::Failed);
            unplugging.join();
            QCOMPARE(input->getErrorString(), address + QStringLiteral(": the device is gone"));
            QCOMPARE(input->read(&piece, 0), ByteInput::Failed);
        }
    }

    void saysWhatCannotBeOpened()
    {
        QCOMPARE(openError(QStringLiteral("serial:/dev/null")),
                 QStringLiteral("serial:/dev/null: this is no serial port"));
        PseudoTerminal device(m_path);
        QVERIFY(device.plugIn());
        const QString address = QStringLiteral("serial:") + m_path;
        const auto first = inputFor(address);
        QVERIFY(first->open());
        QCOMPARE(openError(address), address + QStringLiteral(": another program uses it"));
    }

    void cancellingEndsWaiting()
    {
        PseudoTerminal device(m_path);
        QVERIFY(device.plugIn());
        const auto input = inputFor(QStringLiteral("serial:") + m_path);
        QVERIFY(input->open());
        std::thread canceller([&] { input->cancel(); });
        QByteArray piece;
        QCOMPARE(input->read(&piece, 60000), ByteInput::Nothing);
        canceller.join();
        QVERIFY(!input->open());
    }
};

QTEST_GUILESS_MAIN(TestSerialInput)
#include "tst_serialinput.moc"
