#include "connectdialog.h"

#include "addressform.h"
#include "container.h"
#include "filefilters.h"
#include "labels.h"
#include "ratechoice.h"

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
#include <QStyle>
#include <QVBoxLayout>

ConnectDialog::ConnectDialog(SourceFactory* factory, const Opener& opener, QWidget* parent)
    : QDialog(parent)
    , m_factory(factory)
    , m_opener(opener)
    , m_recent(new QComboBox)
    , m_address(new AddressForm)
    , m_rate(new RateChoice)
    , m_name(new QLineEdit)
    , m_definitions(new QLineEdit)
    , m_imports(new QLineEdit)
    , m_type(new QComboBox)
    , m_framing(new QComboBox)
    , m_error(new QLabel)
{
    setWindowTitle(tr("Connect"));
    m_recent->setAccessibleName(tr("Recent connections"));
    m_recent->setToolTip(tr("Fill in what was used before"));
    m_recent->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_name->setPlaceholderText(tr("what to call it; else its address"));
    m_name->setAccessibleName(tr("Name"));
    m_name->setToolTip(tr("What the list of sources and the names of senders call it, and the recent connections"));
    QPushButton* const browseDefinitions = new QPushButton(tr("Bro&wse..."));
    m_definitions->setPlaceholderText(tr("those in use, or the source's own"));
    m_definitions->setAccessibleName(tr("File of definitions"));
    m_definitions->setToolTip(
        tr("A MAVLink dialect (.xml), a Protocol Buffers schema (.proto or a descriptor set), a definition of ROS 2 or "
           "DDS (.msg, .idl), or a JSON schema (.schema.json)"));
    m_imports->setPlaceholderText(tr("folders of imported files, divided by \"%1\"").arg(QDir::listSeparator()));
    m_imports->setAccessibleName(tr("Folders of imports"));
    m_imports->setToolTip(tr("Where files that a schema imports are looked for; its own folder always is"));
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
        const QString path = QFileDialog::getOpenFileName(this, tr("Load Definitions"), m_definitions->text(),
                                                          FileFilters::definitions(*m_factory->getDefinitions()));
        if (path.isEmpty())
            return;
        m_definitions->setText(path);
        followDefinitions();
    });
    connect(m_definitions, &QLineEdit::editingFinished, this, &ConnectDialog::followDefinitions);
    connect(m_imports, &QLineEdit::editingFinished, this, &ConnectDialog::followDefinitions);
    connect(m_type, &QComboBox::currentTextChanged, this, &ConnectDialog::followRecording);
    connect(m_address, &AddressForm::changed, this, &ConnectDialog::followRecording);
    QGroupBox* const group = new QGroupBox(tr("Definitions"));
    QFormLayout* const definitions = new QFormLayout(group);
    QHBoxLayout* const definitionsRow = new QHBoxLayout;
    definitionsRow->addWidget(m_definitions, 1);
    definitionsRow->addWidget(browseDefinitions);
    QLabel* const definitionsLabel = new QLabel(tr("&File:"));
    definitionsLabel->setBuddy(m_definitions);
    definitions->addRow(definitionsLabel, definitionsRow);
    definitions->addRow(tr("&Imports:"), m_imports);
    definitions->addRow(tr("Messa&ge type:"), m_type);
    definitions->addRow(tr("F&raming:"), m_framing);

    m_error->setWordWrap(true);
    m_error->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setToldName(m_error, tr("What is wrong"));
    m_errorSign = new QLabel;
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_errorSign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(side));
    QHBoxLayout* const errorRow = new QHBoxLayout;
    errorRow->addWidget(m_errorSign, 0, Qt::AlignTop);
    errorRow->addWidget(m_error, 1);
    m_errorSign->hide();
    m_error->hide();

    QDialogButtonBox* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("C&onnect"));
    connect(buttons, &QDialogButtonBox::accepted, this, &ConnectDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ConnectDialog::reject);

    QVBoxLayout* const layout = new QVBoxLayout(this);
    const auto addRow = [this, layout](const QString& text, QWidget* editor) {
        QLabel* const label = new QLabel(text);
        label->setBuddy(editor);
        label->setMinimumWidth(m_address->getLabelWidth());
        QHBoxLayout* const row = new QHBoxLayout;
        row->addWidget(label);
        row->addWidget(editor, 1);
        layout->addLayout(row);
        return label;
    };
    m_recentLabel = addRow(tr("Re&cent:"), m_recent);
    m_recentLabel->hide();
    m_recent->hide();
    layout->addWidget(m_address);
    m_rateLabel = addRow(tr("Rate:"), m_rate);
    addRow(tr("&Name:"), m_name);
    layout->addWidget(group);
    layout->addLayout(errorRow);
    layout->addStretch(1);
    layout->addWidget(buttons);
    resize(fontMetrics().averageCharWidth() * 80, sizeHint().height());
    followDefinitions();
}

void ConnectDialog::offer(const QVector<SourceOptions>& recent)
{
    m_recent->clear();
    m_recent->addItem(tr("choose to fill in"));
    for (const SourceOptions& options : recent)
        m_recent->addItem(options.name.isEmpty() ? options.address
                                                 : tr("%1 (%2)", "name, address").arg(options.name, options.address));
    m_recentLabel->setVisible(!recent.isEmpty());
    m_recent->setVisible(!recent.isEmpty());
    connect(m_recent, QOverload<int>::of(&QComboBox::activated), this, [this, recent](int index) {
        if (index > 0)
            setOptions(recent.at(index - 1));
    });
}

// A schema is read as soon as it is named, so that its types can be chosen and its faults are seen.
void ConnectDialog::followDefinitions()
{
    showError(QString());
    const SourceOptions options = getOptions();
    const bool isSchema = m_factory->hasNamedTypes(options);
    followRecording();
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

// A rate is asked for where messages do not say when they were, as far as the file tells what it is.
void ConnectDialog::followRecording()
{
    const Container* const container = m_factory->recognize(getOptions());
    const bool hasRate = container && !container->hasTimes;
    m_rateLabel->setVisible(hasRate);
    m_rate->setVisible(hasRate);
    if (m_kind == m_address->getAddress().kind)
        return;
    m_kind = m_address->getAddress().kind;
    layout()->activate();
    resize(width(), sizeHint().height()); // some have many fields, and others none
}

SourceOptions ConnectDialog::getOptions() const
{
    SourceOptions options;
    options.name = m_name->text().trimmed();
    const InputAddress address = m_address->getAddress();
    options.address = address.toString();
    options.password = address.password;
    options.rate = m_rate->isHidden() ? 0 : m_rate->getRate();
    options.definitions = m_definitions->text().trimmed();
    if (m_factory->hasNamedTypes(options)) {
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
        address.password = options.password;
        m_address->setAddress(address);
    }
    m_name->setText(options.name);
    m_rate->setRate(options.rate);
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
