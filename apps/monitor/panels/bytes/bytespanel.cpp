#include "bytespanel.h"

#include "bitsstrip.h"
#include "bytesview.h"
#include "corvel.h"
#include "desk.h"
#include "fieldinfo.h"
#include "fieldsummary.h"
#include "labels.h"
#include "message.h"
#include "playbacktime.h"

#include <QAction>
#include <QEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QVBoxLayout>

static const int MostRanges = 4; // that are told
static const int MostCharacters = 60;

BytesPanel::BytesPanel(Desk* desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_title(new ElidedLabel)
    , m_view(new BytesView)
    , m_text(new ElidedLabel)
    , m_bits(new BitsStrip)
{
    m_view->setAccessibleName(tr("Bytes"));
    for (QLabel* const label : {m_title, m_text}) {
        label->setMinimumWidth(1); // a long text is no reason for a wide dock
        label->setContentsMargins(4, 1, 4, 1);
    }
    QHBoxLayout* const bar = new QHBoxLayout;
    bar->addWidget(m_text, 1);
    bar->addWidget(m_bits);
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_title);
    layout->addWidget(m_view, 1);
    layout->addLayout(bar);
    setFocusProxy(m_view);
    m_view->setMinimumHeight(2 * m_view->fontMetrics().lineSpacing());

    connect(m_view, &BytesView::byteChosen, this, [this](qint64 byte) { chooseAt(8 * byte, FieldBytes::Bytes); });
    connect(m_bits, &BitsStrip::bitChosen, this,
            [this](int bit) { chooseAt(8 * m_view->getCurrent() + bit, FieldBytes::Bits); });
    connect(desk, &Desk::chosenMessageChanged, this, &BytesPanel::followMessage);
    connect(desk, &Desk::currentFieldChanged, this, &BytesPanel::followField);
    connect(desk, &Desk::bytesWanted, this, [this]() { Q_EMIT m_desk->wanted(this); });
    connect(desk->getLatest(), SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    offerUse();
    showNewest();
    showMarks(false);
    followField();
}

void BytesPanel::offerUse()
{
    QAction* const use = new QAction(tr("Show &Bytes"), this);
    use->setShortcut(QKeySequence(tr("Ctrl+B")));
    const auto show = [this]() { Q_EMIT m_desk->wanted(this); };
    m_desk->offerUse({QLatin1String("bytes"), use, QString(), [show](const FieldPath&, const Origin&) { show(); },
                      [show](const QString&) {
                          show();
                          return QString();
                      },
                      nullptr, true});
}

void BytesPanel::followMessage()
{
    m_isOfList = !m_desk->getChosenMessage().isNull();
    if (m_isOfList)
        showMessage(m_desk->getChosenMessage());
    else
        showNewest();
    showMarks(true);
}

void BytesPanel::showNewest()
{
    showMessage(m_subject.info ? m_desk->getLatest()->getLatest(m_subject.info, m_subject.sender) : MessageReference());
}

void BytesPanel::followField()
{
    const Subject& subject = m_desk->getCurrentSubject();
    if (!subject.info)
        return; // rows can go and come again
    if (m_isTelling) {
        m_subject = subject;
        return;
    }
    const Message* const chosen = m_desk->getChosenMessage().get();
    m_path = m_desk->getCurrentField();
    m_rest.clear();
    const bool isOther = !(subject == m_subject);
    m_subject = subject;
    const bool wasOfList = m_isOfList;
    m_isOfList = m_isOfList && chosen && subject.covers(chosen->getInfo(), chosen->getSender());
    if (!m_isOfList && (isOther || wasOfList))
        showNewest();
    showMarks(true);
}

void BytesPanel::processMessage(const Message* message)
{
    if (m_isOfList || !m_subject.info || !m_subject.covers(message->getInfo(), message->getSender()))
        return;
    const bool isFirst = m_message.isNull();
    m_message = MessageReference(message);
    if (isVisible() && !visibleRegion().isEmpty()) {
        showMessage(m_message);
        showMarks(isFirst);
    }
}

void BytesPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    renew();
}

void BytesPanel::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        renew();
}

void BytesPanel::renew()
{
    showMessage(m_message);
    showMarks(false);
}

// What was shown may be of another place of a recording, or of a source that was closed.
void BytesPanel::forget(const MessageInfo* info)
{
    if (m_isOfList || m_subject.info != info)
        return;
    showMessage(MessageReference());
    showMarks(false);
}

void BytesPanel::showMessage(const MessageReference& message)
{
    m_message = message;
    const bool isHidden = !message.isNull() && FieldSummary::hasHidden(message->getInfo());
    m_view->setHint(isHidden           ? tr("Hidden data: messages of this type have confidential fields.")
                    : message.isNull() ? tr("Choose a row in the tree, or a message under Messages, to see its bytes.")
                                       : tr("The message has no bytes."));
    m_view->setBytes(message.isNull() || isHidden ? QByteArray() : message->getData());
    m_title->setText(getTitle());
    m_title->setVisible(!message.isNull());
}

QString BytesPanel::getTitle() const
{
    if (m_message.isNull())
        return QString();
    QStringList texts{m_message->getInfo()->getName()};
    if (!m_message->getSender().isEmpty())
        texts.first() += QLatin1Char(' ') + m_message->getSender();
    if (m_message->getTime() != Message::NoTime)
        texts.append(PlaybackTime::clockText(m_message->getTime()));
    texts.append(tr("%1 bytes").arg(QLocale().toString(m_message->getData().size())));
    texts.append(m_isOfList ? tr("chosen under Messages") : tr("the newest"));
    return texts.join(QStringLiteral(" \u00b7 "));
}

void BytesPanel::showMarks(bool mustBeSeen)
{
    const FieldBytes found(m_path, m_view->getBytes().isEmpty() ? nullptr : m_message.get());
    const bool isField = m_path.getField();
    m_view->setMarks(isField ? found.getRanges() : QVector<FieldBytes::Range>());
    if (mustBeSeen && isField && !found.getRanges().isEmpty() && !m_isTelling) {
        m_view->setCurrent((found.getRanges().last().end - 1) / 8); // as much of it as there is room for
        m_view->setCurrent(found.getRanges().first().begin / 8);
    }
    const QString text = getText();
    m_text->setText(text);
    const QString told = m_view->getBytes().isEmpty() ? m_view->getHint() : text;
    if (m_view->accessibleDescription() != told)
        m_view->setAccessibleDescription(told);
    showBits();
}

void BytesPanel::showBits()
{
    const QByteArray& bytes = m_view->getBytes();
    const qint64 byte = m_view->getCurrent();
    m_bits->setVisible(!bytes.isEmpty());
    if (!bytes.isEmpty())
        m_bits->show(quint8(bytes.at(int(byte))), m_view->getMarksOf(byte));
}

/** "bytes 4 to 7, 9", "bits 1 to 2 of byte 18". */
QString BytesPanel::textOfMarks(const FieldBytes& found) const
{
    const auto span = [](qint64 begin, qint64 last) {
        return begin == last ? QString::number(begin) : tr("%1 to %2").arg(begin).arg(last);
    };
    QStringList texts;
    bool isOne = true;
    for (const FieldBytes::Range& range : found.getRanges()) {
        if (texts.size() == MostRanges) {
            texts.append(QString(QChar(0x2026)));
            break;
        }
        if (range.begin % 8 != 0 || range.end % 8 != 0) {
            const QString bits = range.end - range.begin == 1 ? tr("bit %1 of byte %2") : tr("bits %1 of byte %2");
            texts.append(bits.arg(span(range.begin % 8, (range.end - 1) % 8)).arg(range.begin / 8));
            continue;
        }
        isOne = range.end - range.begin == 8 && found.getRanges().size() == 1;
        texts.append(span(range.begin / 8, range.end / 8 - 1));
    }
    const QString all = texts.join(QLatin1String(", "));
    const FieldBytes::Range first = found.getRanges().first();
    if (first.begin % 8 != 0 || first.end % 8 != 0)
        return all;
    return isOne ? tr("byte %1").arg(all) : tr("bytes %1").arg(all);
}

QString BytesPanel::getText() const
{
    if (m_view->getBytes().isEmpty())
        return QString();
    if (!m_path.getField() || m_path.getMessageInfo() != m_message->getInfo())
        return m_rest.isEmpty() ? tr("Choose a field in the tree, or a byte.") : m_rest;
    const FieldBytes found(m_path, m_message.get());
    const QString dot = QStringLiteral(" \u00b7 ");
    const QString name = m_path.getFieldName();
    switch (found.getEnd()) {
    case FieldBytes::Found:
        break;
    case FieldBytes::Absent:
        return name + dot + tr("not in this message");
    case FieldBytes::LeftOff:
        return name + dot + tr("needs no bytes in this message: it has its usual value");
    case FieldBytes::Computed:
        return name + dot + tr("computed, and in no bytes of its own");
    case FieldBytes::Untold:
        return name + dot + tr("nobody can tell where it stands in these bytes");
    }
    // In this order, and where there is no room the middle of a long name is left out.
    QString text = textOfMarks(found) + dot + name;
    const FieldValue value = m_path.getValue(m_message.get());
    if (value.isValid() && !value.getSubMessage()) {
        const QString shown = m_path.getField()->getInterpretedString(value, true).simplified();
        if (!shown.isEmpty())
            text += dot + (shown.size() > MostCharacters ? shown.left(MostCharacters) + QChar(0x2026) : shown);
    }
    return text;
}

void BytesPanel::chooseAt(qint64 bit, FieldBytes::Grain grain)
{
    if (m_message.isNull() || m_view->getBytes().isEmpty())
        return;
    m_path = FieldBytes::at(m_message.get(), bit, grain);
    m_rest.clear();
    if (!m_path.getField()) {
        const QString name = FieldBytes::getNameOfRest(m_message.get(), bit / 8);
        m_rest =
            tr("byte %1").arg(bit / 8) + QStringLiteral(" \u00b7 ") + (name.isEmpty() ? tr("none of a field") : name);
    }
    m_isTelling = true;
    showMarks(false);
    if (m_path.getField())
        Q_EMIT m_desk->fieldWanted(m_path, m_message->getSender());
    m_isTelling = false;
}
