#include "connectdialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QStyle>
#include <QVBoxLayout>

namespace
{

QString definitionsFilter()
{
    return ConnectDialog::tr("Definitions (*.xml *.proto *.desc *.pb *.bin);;All files (*)");
}

// An IPv6 address stands in brackets.
QString bracketed(const QString& host)
{
    return host.contains(QLatin1Char(':')) && !host.startsWith(QLatin1Char('['))
               ? QLatin1Char('[') + host + QLatin1Char(']')
               : host;
}

} // namespace

ConnectDialog::ConnectDialog(SourceFactory* factory, const Opener& opener, QWidget* parent)
    : QDialog(parent)
    , m_factory(factory)
    , m_opener(opener)
    , m_kind(new QComboBox)
    , m_addressLabel(new QLabel)
    , m_address(new QLineEdit)
    , m_browse(new QPushButton(tr("&Browse...")))
    , m_portLabel(new QLabel(tr("&Port:")))
    , m_port(new QSpinBox)
    , m_definitions(new QLineEdit)
    , m_imports(new QLineEdit)
    , m_type(new QComboBox)
    , m_framing(new QComboBox)
    , m_error(new QLabel)
{
    setWindowTitle(tr("Connect"));
    m_kind->addItems({tr("UDP: listen for datagrams"), tr("TCP: connect to a server"),
                      tr("WebSocket: a Foxglove server"), tr("A recording or a device file"), tr("Standard input")});
    m_kind->setAccessibleName(tr("Kind of source"));
    m_kind->setToolTip(tr("Where the messages come from"));
    m_address->setAccessibleName(tr("Address"));
    m_addressLabel->setBuddy(m_address);
    m_port->setRange(1, 65535);
    m_port->setAccessibleName(tr("Port"));
    m_port->setToolTip(tr("The number of the port"));
    m_portLabel->setBuddy(m_port);
    m_browse->setToolTip(tr("Choose a file"));
    connect(m_kind, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ConnectDialog::followKind);
    connect(m_browse, &QPushButton::clicked, this, [this]() {
        browse(m_address, tr("Open Recording"), tr("Recordings (*.tlog *.mavlink *.mcap *.osi *.bin);;All files (*)"));
    });
    QFormLayout* const source = new QFormLayout;
    source->addRow(tr("&Kind:"), m_kind);
    QHBoxLayout* const addressRow = new QHBoxLayout;
    addressRow->addWidget(m_address, 1);
    addressRow->addWidget(m_browse);
    source->addRow(m_addressLabel, addressRow);
    source->addRow(m_portLabel, m_port);

    QPushButton* const browseDefinitions = new QPushButton(tr("Bro&wse..."));
    m_definitions->setPlaceholderText(tr("those in use, or the source's own"));
    m_definitions->setAccessibleName(tr("File of definitions"));
    m_definitions->setToolTip(
        tr("A MAVLink dialect (.xml), or a Protocol Buffers schema (.proto or a descriptor set)"));
    m_imports->setPlaceholderText(tr("folders of imported files, divided by \"%1\"").arg(QDir::listSeparator()));
    m_imports->setAccessibleName(tr("Folders of imports"));
    m_imports->setToolTip(tr("Where a .proto file's imports are looked for; its own folder always is"));
    m_type->setEditable(true);
    m_type->setAccessibleName(tr("Message type"));
    m_type->setToolTip(tr("The one type of all messages, for sources that do not say what they send"));
    m_framing->addItem(tr("told by the source"), QString());
    m_framing->addItem(tr("variable length (varint) before each message"), QLatin1String("varint"));
    m_framing->addItem(tr("32-bit length before each message"), QLatin1String("u32"));
    m_framing->addItem(tr("one message a datagram"), QLatin1String("datagram"));
    m_framing->setAccessibleName(tr("Framing"));
    m_framing->setToolTip(tr("How messages lie in the stream"));
    connect(browseDefinitions, &QPushButton::clicked, this, [this]() {
        browse(m_definitions, tr("Load Definitions"), definitionsFilter());
        followDefinitions();
    });
    connect(m_definitions, &QLineEdit::editingFinished, this, &ConnectDialog::followDefinitions);
    connect(m_imports, &QLineEdit::editingFinished, this, &ConnectDialog::followDefinitions);
    QGroupBox* const group = new QGroupBox(tr("Definitions"));
    QFormLayout* const definitions = new QFormLayout(group);
    QHBoxLayout* const definitionsRow = new QHBoxLayout;
    definitionsRow->addWidget(m_definitions, 1);
    definitionsRow->addWidget(browseDefinitions);
    QLabel* const definitionsLabel = new QLabel(tr("&File:"));
    definitionsLabel->setBuddy(m_definitions);
    definitions->addRow(definitionsLabel, definitionsRow);
    definitions->addRow(tr("&Imports:"), m_imports);
    definitions->addRow(tr("Message &type:"), m_type);
    definitions->addRow(tr("F&raming:"), m_framing);

    m_error->setWordWrap(true);
    m_error->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_error->setAccessibleName(tr("What is wrong"));
    m_errorSign = new QLabel;
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_errorSign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
    QHBoxLayout* const errorRow = new QHBoxLayout;
    errorRow->addWidget(m_errorSign, 0, Qt::AlignTop);
    errorRow->addWidget(m_error, 1);
    m_errorSign->hide();
    m_error->hide();

    QDialogButtonBox* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("Co&nnect"));
    connect(buttons, &QDialogButtonBox::accepted, this, &ConnectDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ConnectDialog::reject);

    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->addLayout(source);
    layout->addWidget(group);
    layout->addLayout(errorRow);
    layout->addStretch(1);
    layout->addWidget(buttons);
    resize(fontMetrics().averageCharWidth() * 80, sizeHint().height());
    followKind();
    followDefinitions();
}

void ConnectDialog::followKind()
{
    const int kind = m_kind->currentIndex();
    const bool hasPort = kind == UdpKind || kind == TcpKind;
    m_portLabel->setVisible(hasPort);
    m_port->setVisible(hasPort);
    m_browse->setVisible(kind == FileKind);
    m_address->setEnabled(kind != StandardInputKind);
    switch (kind) {
    case UdpKind:
        m_addressLabel->setText(tr("&Address to listen on:"));
        m_address->setText(QLatin1String("0.0.0.0"));
        m_port->setValue(14550);
        break;
    case TcpKind:
        m_addressLabel->setText(tr("&Host:"));
        m_address->setText(QLatin1String("localhost"));
        m_port->setValue(5760);
        break;
    case WebSocketKind:
        m_addressLabel->setText(tr("&Address:"));
        m_address->setText(QLatin1String("ws://localhost:8765"));
        break;
    case FileKind:
        m_addressLabel->setText(tr("Fil&e:"));
        m_address->clear();
        break;
    default:
        m_addressLabel->setText(tr("&Address:"));
        m_address->clear();
    }
    m_address->setToolTip(m_addressLabel->text().remove(QLatin1Char('&')).remove(QLatin1Char(':')));
}

// A schema is read as soon as it is named, so that its types can be chosen and its faults are seen.
void ConnectDialog::followDefinitions()
{
    showError(QString());
    const SourceOptions options = getOptions();
    const bool isSchema = options.isSchema();
    m_imports->setEnabled(isSchema);
    m_type->setEnabled(isSchema);
    m_framing->setEnabled(isSchema);
    if (!isSchema)
        return;
    QString error;
    const QStringList types = m_factory->loadSchema(options, &error);
    if (!error.isEmpty()) {
        showError(error);
        return;
    }
    const QString chosen = m_type->currentText();
    m_type->clear();
    m_type->addItems(types);
    if (types.contains(chosen))
        m_type->setCurrentText(chosen);
}

void ConnectDialog::browse(QLineEdit* edit, const QString& title, const QString& filter)
{
    const QString path = QFileDialog::getOpenFileName(this, title, edit->text(), filter);
    if (!path.isEmpty())
        edit->setText(path);
}

SourceOptions ConnectDialog::getOptions() const
{
    SourceOptions options;
    const QString address = m_address->text().trimmed();
    switch (m_kind->currentIndex()) {
    case UdpKind:
        options.address = QString::fromLatin1("udp:%1:%2").arg(bracketed(address)).arg(m_port->value());
        break;
    case TcpKind:
        options.address = QString::fromLatin1("tcp:%1:%2").arg(bracketed(address)).arg(m_port->value());
        break;
    case StandardInputKind:
        options.address = QLatin1String("-");
        break;
    default:
        options.address = address;
    }
    options.definitions = m_definitions->text().trimmed();
    if (options.isSchema()) {
        options.importPaths = m_imports->text().split(QDir::listSeparator());
        options.importPaths.removeAll(QString());
        options.typeName = m_type->currentText().trimmed();
        options.framing = m_framing->currentData().toString();
    }
    return options;
}

void ConnectDialog::setOptions(const SourceOptions& options)
{
    InputAddress address;
    QString error;
    if (InputAddress::parse(options.address, &address, &error)) {
        static const int kinds[] = {FileKind, StandardInputKind, UdpKind, TcpKind, WebSocketKind};
        m_kind->setCurrentIndex(kinds[address.kind]);
        m_address->setText(address.host.isEmpty() ? address.path : address.host);
        if (address.port)
            m_port->setValue(address.port);
    }
    m_definitions->setText(options.definitions);
    m_imports->setText(options.importPaths.join(QDir::listSeparator()));
    followDefinitions();
    m_type->setCurrentText(options.typeName);
    m_framing->setCurrentIndex(qMax(0, m_framing->findData(options.framing)));
}

void ConnectDialog::showError(const QString& text)
{
    m_error->setText(text);
    m_errorSign->setVisible(!text.isEmpty());
    m_error->setVisible(!text.isEmpty());
    layout()->activate();
    resize(width(), qMax(height(), layout()->totalHeightForWidth(width()))); // as nothing else makes it higher
}

void ConnectDialog::accept()
{
    const SourceOptions options = getOptions();
    QString error;
    if (options.address.isEmpty())
        error = tr("Choose a file.");
    else if (m_opener(options, &error))
        error.clear();
    showError(error);
    if (error.isEmpty())
        QDialog::accept();
}
