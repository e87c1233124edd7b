#include "../inputfixtures.h"
#include "pseudoterminal.h"
#include "testbase.h"
#include "waitfor.h"

#include <QTemporaryDir>

class TestSerialInput : public TestBase
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("ttyTest"));

    const QString m_address = QStringLiteral("serial:") + m_path;

    static QByteArray notOpened(const QString& address, const char* why)
    {
        return "<not opened: " + address.toUtf8() + ": " + why + ">";
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
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(openAndReadAll(m_address), notOpened(m_address, "there is no such serial port"));
            QVERIFY(device.plugIn());
            const auto input = inputFor(m_address);
            QVERIFY2(input->open(), qPrintable(input->getErrorString()));
            QCOMPARE(device.send("last words"), 10);
            QByteArray piece;
            QCOMPARE(input->read(&piece, 10000), ByteInput::Data);
            QCOMPARE(piece, QByteArray("last words"));
            std::thread unplugging([&] { device.unplug(); });
            QCOMPARE(input->read(&piece, 10000), ByteInput::Failed);
            unplugging.join();
            QCOMPARE(input->getErrorString(), m_address + QStringLiteral(": the device is gone"));
            QCOMPARE(input->read(&piece, 0), ByteInput::Failed);
        }
    }

    void saysWhatCannotBeOpenedAndCanBeCancelled()
    {
        const QString null = QStringLiteral("serial:/dev/null");
        QCOMPARE(openAndReadAll(null), notOpened(null, "this is no serial port"));
        PseudoTerminal device(m_path);
        QVERIFY(device.plugIn());
        const auto input = inputFor(m_address);
        QVERIFY(input->open());
        QCOMPARE(openAndReadAll(m_address), notOpened(m_address, "another program uses it"));
        QByteArray piece;
        QVERIFY(isCancelled(input.get(), [&] { QCOMPARE(input->read(&piece, 60000), ByteInput::Nothing); }));
        QVERIFY(!input->open());
    }
};

QTEST_GUILESS_MAIN(TestSerialInput)
#include "tst_serialinput.moc"
