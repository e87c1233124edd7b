#include "preferencesdialog.h"

#include "labels.h"
#include "language.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

namespace
{

/** Shows the whole page where the screen has room for it, and scrolls elsewhere. */
class PageArea : public QScrollArea
{
public:
    explicit PageArea(QWidget* page)
    {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus); // Tab scrolls to where it leads
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setWidgetResizable(true);
        setWidget(page);
    }

    QSize sizeHint() const override { return widget()->sizeHint().expandedTo(minimumSizeHint()); }
    QSize minimumSizeHint() const override
    {
        const int width = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
        return QSize(width, QScrollArea::minimumSizeHint().height());
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::LayoutRequest)
            updateGeometry(); // its texts are of another language now
        return QScrollArea::eventFilter(watched, event);
    }
};

} // namespace

PreferencesDialog::PreferencesDialog(const Preferences& preferences, bool confidential, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Settings"));
    QWidget* const page = new QWidget;
    m_page = new QVBoxLayout(page);
    m_page->setContentsMargins(0, 0, 0, 0);
    m_page->addWidget(createDisplay(preferences));
    m_page->addWidget(createData(preferences, confidential));
    m_page->addStretch(1);
    m_area = new PageArea(page);
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->addWidget(m_area);
    QDialogButtonBox* const buttons =
        new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, [this]() {
        Q_EMIT applied();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &PreferencesDialog::applied);
    resize(sizeHint().boundedTo(getRoom()));
}

QSize PreferencesDialog::getRoom() const
{
    const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return screen()->availableSize() - QSize(0, 2 * titleBar); // with a frame, which may be as high
}

// Nothing else makes it higher.
void PreferencesDialog::showWarning(bool shown)
{
    m_warning->setVisible(shown);
    m_page->activate();
    const int more = m_page->totalHeightForWidth(m_area->viewport()->width()) - m_area->viewport()->height();
    resize(width(), qMax(height(), qMin(height() + more, getRoom().height())));
    if (shown) // once it has its place
        QTimer::singleShot(0, m_warning, [this]() { m_area->ensureWidgetVisible(m_warning); });
}

static void addRow(QFormLayout* form, const QString& label, QWidget* field, const QString& toolTip)
{
    form->addRow(label, field); // makes the field the label's buddy
    field->setToolTip(toolTip);
}

QWidget* PreferencesDialog::createDisplay(const Preferences& preferences)
{
    QGroupBox* const box = new QGroupBox(tr("Display"));
    QFormLayout* const form = new QFormLayout(box);
    m_tick = new QSpinBox;
    m_tick->setRange(1, 60);
    m_tick->setSuffix(tr(" Hz"));
    m_tick->setValue(preferences.tickRate);
    addRow(form, tr("&Updates:"), m_tick,
           tr("How often the views show what is new. Every message is counted and recorded at any rate."));
    m_digits = new QSpinBox;
    m_digits->setRange(0, 17);
    m_digits->setSpecialValueText(tr("all"));
    m_digits->setValue(preferences.digits);
    addRow(form, tr("Di&gits:"), m_digits,
           tr("Significant digits of floating-point numbers in the tree, where Decimals says nothing. Copies and raw "
              "values have all of them."));
    m_decimals = new QSpinBox;
    m_decimals->setRange(Preferences::ExactDecimals, 17);
    m_decimals->setSpecialValueText(tr("exact"));
    m_decimals->setValue(preferences.decimals);
    addRow(form, tr("&Decimals:"), m_decimals,
           tr("Digits behind the point of floating-point numbers. Raw values are always exact."));
    m_theme = new QComboBox;
    m_theme->addItem(tr("As the system"), Theme::System);
    m_theme->addItem(tr("Light"), Theme::Light);
    m_theme->addItem(tr("Dark"), Theme::Dark);
    m_theme->setCurrentIndex(m_theme->findData(preferences.theme));
    addRow(form, tr("&Colours:"), m_theme, tr("The colours of all windows"));
    m_language = new QComboBox;
    m_language->addItem(tr("As the system"), QString());
    const QVector<Language::Choice> choices = Language::getChoices();
    for (const Language::Choice& choice : choices)
        m_language->addItem(choice.name, choice.code);
    m_language->setCurrentIndex(qMax(0, m_language->findData(preferences.language)));
    addRow(form, tr("&Language:"), m_language,
           tr("The language of all texts, at once. What was logged stays in the language it was logged in."));
    m_highlight = new QCheckBox(tr("&Highlight values that change"));
    m_highlight->setChecked(preferences.highlight);
    form->addRow(m_highlight);
    return box;
}

QWidget* PreferencesDialog::createData(const Preferences& preferences, bool confidential)
{
    QGroupBox* const box = new QGroupBox(tr("Messages"));
    QFormLayout* const form = new QFormLayout(box);
    m_silence = new QSpinBox;
    m_silence->setRange(0, 1000);
    m_silence->setSpecialValueText(tr("never"));
    m_silence->setSuffix(tr(" intervals"));
    m_silence->setValue(preferences.silentIntervals);
    addRow(form, tr("Gr&ey types after:"), m_silence,
           tr("How many of its intervals without a message make a type count as silent"));
    m_timeOut = new QDoubleSpinBox;
    m_timeOut->setRange(0, Preferences::LongestTimeOut);
    m_timeOut->setDecimals(1);
    m_timeOut->setSuffix(tr(" s"));
    m_timeOut->setSpecialValueText(tr("never"));
    m_timeOut->setValue(preferences.watchTimeOut);
    addRow(form, tr("&Watches time out after:"), m_timeOut,
           tr("How long a watch keeps its value when no message brings a new one"));

    m_annotations = new QLineEdit(preferences.annotations);
    m_annotations->setClearButtonEnabled(true);
    m_annotations->setMinimumWidth(fontMetrics().averageCharWidth() * 32);
    m_annotations->setPlaceholderText(tr("None"));
    m_annotations->setAccessibleName(tr("Annotation file"));
    QPushButton* const button = new QPushButton(tr("&Browse..."));
    connect(button, &QPushButton::clicked, this, &PreferencesDialog::browse);
    QHBoxLayout* const line = new QHBoxLayout;
    line->addWidget(m_annotations, 1);
    line->addWidget(button);
    QLabel* const label = new QLabel(tr("&Annotations:"));
    label->setBuddy(m_annotations);
    m_annotations->setToolTip(tr("A file that adds roles, confidentiality and computed fields to the definitions"));
    form->addRow(label, line);

    m_confidential = new QCheckBox(tr("Show con&fidential data"));
    m_confidential->setChecked(confidential);
    m_warning = new QLabel(getConfidentialWarning());
    m_warning->setWordWrap(true);
    m_warning->setVisible(confidential);
    setToldName(m_warning, tr("Warning"));
    connect(m_confidential, &QCheckBox::toggled, this, &PreferencesDialog::showWarning);
    form->addRow(m_confidential);
    form->addRow(m_warning);
    return box;
}

QString PreferencesDialog::getConfidentialWarning()
{
    return tr("Fields that their owner marked as confidential can then be read by anybody who sees this screen, also "
              "in pictures, copies and plots. The program forgets this choice when it ends.");
}

void PreferencesDialog::browse()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Annotations"), m_annotations->text(),
                                                      tr("Annotations (*.json);;All files (*)"));
    if (!path.isEmpty())
        m_annotations->setText(path);
}

Preferences PreferencesDialog::getPreferences() const
{
    Preferences preferences;
    preferences.tickRate = m_tick->value();
    preferences.digits = m_digits->value();
    preferences.decimals = m_decimals->value();
    preferences.highlight = m_highlight->isChecked();
    preferences.theme = static_cast<Theme::Kind>(m_theme->currentData().toInt());
    preferences.language = m_language->currentData().toString();
    preferences.silentIntervals = m_silence->value();
    preferences.watchTimeOut = m_timeOut->value();
    preferences.annotations = m_annotations->text().trimmed();
    return preferences;
}

bool PreferencesDialog::isConfidentialShown() const
{
    return m_confidential->isChecked();
}
