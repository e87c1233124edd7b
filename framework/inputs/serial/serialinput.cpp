#include "serialinput.h"

#include "socketwait.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace
{

const int PieceSize = 64 * 1024;

/** How the bits lie on the line: "8N1" taken apart. */
struct Format
{
    QSerialPort::DataBits bits;
    QSerialPort::Parity parity;
    QSerialPort::StopBits stop;
};

bool parseFormat(const QString& text, Format* format)
{
    const QString parities = QStringLiteral("NEOMS");
    const QSerialPort::Parity values[] = {QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity,
                                          QSerialPort::MarkParity, QSerialPort::SpaceParity};
    const QString stops = text.mid(2);
    const int bits = text.left(1).toInt();
    const int parity = int(parities.indexOf(text.mid(1, 1).toUpper()));
    if (text.size() < 3 || bits < 5 || bits > 8 || parity < 0)
        return false;
    format->bits = static_cast<QSerialPort::DataBits>(bits);
    format->parity = values[parity];
    format->stop = stops == QLatin1String("1.5") ? QSerialPort::OneAndHalfStop
                   : stops == QLatin1String("2") ? QSerialPort::TwoStop
                                                 : QSerialPort::OneStop;
    return stops == QLatin1String("1") || format->stop != QSerialPort::OneStop;
}

bool parseFlow(const QString& text, QSerialPort::FlowControl* flow)
{
    const int index =
        int(QStringList{QStringLiteral("none"), QStringLiteral("hardware"), QStringLiteral("software")}.indexOf(text));
    *flow = static_cast<QSerialPort::FlowControl>(qMax(0, index));
    return index >= 0;
}

bool parseBaud(const QString& text, qint32* baud)
{
    for (const QChar character : text)
        if (character < QLatin1Char('0') || character > QLatin1Char('9'))
            return false;
    *baud = text.toInt();
    return *baud > 0;
}

bool check(InputAddress* address, QString* reason)
{
    qint32 baud = 0;
    Format format;
    QSerialPort::FlowControl flow = QSerialPort::NoFlowControl;
    const QString baudText = address->getValue(QStringLiteral("baud"));
    const QString formatText = address->getValue(QStringLiteral("format"));
    const QString flowText = address->getValue(QStringLiteral("flow"));
    if (address->path.isEmpty())
        *reason = QCoreApplication::translate("InputAddress", "no serial port is named");
    else if (!parseBaud(baudText, &baud))
        *reason =
            QCoreApplication::translate("InputAddress", "baud is \"%1\"; it is a number such as 57600").arg(baudText);
    else if (!parseFormat(formatText, &format))
        *reason = QCoreApplication::translate(
                      "InputAddress",
                      "format is \"%1\"; it has data bits, parity (N, E, O, M or S) and stop bits, such as 8N1")
                      .arg(formatText);
    else if (!parseFlow(flowText, &flow))
        *reason = QCoreApplication::translate("InputAddress", "flow is \"%1\"; it is none, hardware or software")
                      .arg(flowText);
    return reason->isEmpty();
}

ByteInput* create(const InputAddress& address)
{
    return new SerialInput(address);
}

QVector<InputField::Choice> ports()
{
    QVector<InputField::Choice> choices;
    QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    // What was plugged in is more likely meant than what is part of the computer.
    std::stable_partition(ports.begin(), ports.end(),
                          [](const QSerialPortInfo& port) { return port.hasVendorIdentifier(); });
    for (const QSerialPortInfo& port : std::as_const(ports)) {
        const QString path = port.systemLocation();
        const QString about = port.description().isEmpty() ? port.manufacturer() : port.description();
        choices.append({path, about.isEmpty() ? path : path + QStringLiteral(" – ") + about});
    }
    return choices;
}

QVector<InputField::Choice> bauds()
{
    QVector<InputField::Choice> choices;
    for (const int baud : {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200, 230400, 460800, 500000, 921600, 1500000,
                           2000000, 3000000})
        choices.append({QString::number(baud), QString::number(baud)});
    return choices;
}

QVector<InputField::Choice> formats()
{
    QVector<InputField::Choice> choices;
    for (const char* format : {"8N1", "8E1", "8O1", "8N2", "7E1", "7O1", "7N1"})
        choices.append({QLatin1String(format), QLatin1String(format)});
    return choices;
}

QVector<InputField::Choice> flows()
{
    return {{QStringLiteral("none"), QCoreApplication::translate("InputKind", "none")},
            {QStringLiteral("hardware"), QCoreApplication::translate("InputKind", "hardware (RTS/CTS)")},
            {QStringLiteral("software"), QCoreApplication::translate("InputKind", "software (XON/XOFF)")}};
}

QString reasonOf(const QSerialPort& port, const QString& path)
{
    const QFileInfo device(QDir(QStringLiteral("/dev")), path);
    if (port.error() == QSerialPort::DeviceNotFoundError)
        return QCoreApplication::translate("ByteInput", "there is no such serial port");
    if (port.error() == QSerialPort::PermissionError)
        return device.isReadable()
                   ? QCoreApplication::translate("ByteInput", "another program uses it")
                   : QCoreApplication::translate("ByteInput", "permission denied; the group \"%1\" may open it")
                         .arg(device.group());
    if (port.errorString() == QString::fromLocal8Bit(std::strerror(ENOTTY)))
        return QCoreApplication::translate("ByteInput", "this is no serial port");
    return port.errorString();
}

const InputField Fields[] = {
    {"path", QT_TRANSLATE_NOOP("InputKind", "&Port:"),
     QT_TRANSLATE_NOOP("InputKind", "The serial port, such as /dev/ttyUSB0"), "", InputField::ListEditor, ports, true},
    {"baud", QT_TRANSLATE_NOOP("InputKind", "&Baud rate:"), QT_TRANSLATE_NOOP("InputKind", "Bits a second"), "57600",
     InputField::ListEditor, bauds, false},
    {"format", QT_TRANSLATE_NOOP("InputKind", "Data for&mat:"),
     QT_TRANSLATE_NOOP("InputKind", "Data bits, parity (none, even, odd, mark, space) and stop bits"), "8N1",
     InputField::ListEditor, formats, false},
    {"flow", QT_TRANSLATE_NOOP("InputKind", "F&low control:"),
     QT_TRANSLATE_NOOP("InputKind", "How this computer asks the device to wait"), "none", InputField::ChoiceEditor,
     flows, false},
    {}};

} // namespace

const InputKind SerialInputKind = {"serial:",
                                   QT_TRANSLATE_NOOP("InputKind", "Serial port"),
                                   "serial:DEVICE[?baud=57600&format=8N1&flow=none]",
                                   "serial:/dev/ttyUSB0?baud=57600",
                                   0,
                                   InputKind::LiveProperty,
                                   "",
                                   Fields,
                                   check,
                                   create};

SerialInput::SerialInput(const InputAddress& address)
    : ByteInput(address.toString())
    , m_address(address)
    , m_cancelled(false)
{
}

SerialInput::~SerialInput() {}

bool SerialInput::open()
{
    if (m_cancelled) {
        setError(QCoreApplication::translate("ByteInput", "cancelled"));
        return false;
    }
    // Qt's notifiers ask for an event dispatcher, which a thread gets with its first loop; it need not run.
    const QEventLoop loop;
    Format format;
    qint32 baud = 0;
    QSerialPort::FlowControl flow = QSerialPort::NoFlowControl;
    parseFormat(m_address.getValue(QStringLiteral("format")), &format);
    parseBaud(m_address.getValue(QStringLiteral("baud")), &baud);
    parseFlow(m_address.getValue(QStringLiteral("flow")), &flow);
    m_port.reset(new QSerialPort(m_address.path));
    m_port->setBaudRate(baud);
    m_port->setDataBits(format.bits);
    m_port->setParity(format.parity);
    m_port->setStopBits(format.stop);
    m_port->setFlowControl(flow);
    if (m_port->open(QIODevice::ReadOnly)) {
        m_port->clearError(); // of lines that the port does not have, such as for a modem
        return true;
    }
    setError(reasonOf(*m_port, m_address.path));
    m_port.reset();
    return false;
}

ByteInput::Status SerialInput::read(QByteArray* bytes, int timeoutMs)
{
    bytes->clear();
    if (m_cancelled)
        return Nothing;
    const auto isWell = [this] {
        return m_port->error() == QSerialPort::NoError || m_port->error() == QSerialPort::TimeoutError;
    };
    if (m_port->bytesAvailable() == 0 && isWell()) {
        waitInSlices(
            timeoutMs, m_cancelled, [this](int slice) { return m_port->waitForReadyRead(slice); }, isWell);
        if (m_cancelled)
            return Nothing;
    }
    *bytes = m_port->read(PieceSize);
    if (!bytes->isEmpty())
        return Data;
    if (isWell())
        return Nothing;
    setError(QCoreApplication::translate("ByteInput", "the device is gone"));
    return Failed;
}
