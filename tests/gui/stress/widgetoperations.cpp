#include "desk.h"

#include "corvel.h"
#include "eventlogtablewidget.h"
#include "fieldvaluelabel.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "messagewidget.h"

#include <QApplication>
#include <QMessageBox>
#include <QStyleFactory>
#include <QTranslator>

// What can be done with any widget and to the process.

namespace
{

/** Translates everything into something else. */
class OtherLanguage : public QTranslator
{
public:
    // The first is Qt 4's, the second that of Qt 5 and 6.
    QString translate(const char*, const char* source, const char*) const { return change(source); }
    QString translate(const char*, const char* source, const char*, int) const { return change(source); }
    bool isEmpty() const { return false; }

private:
    static QString change(const char* source) { return QLatin1String("~") + QString::fromUtf8(source); }
};

} // namespace

void Desk::putIntoBin(QWidget* widget)
{
    widget->hide();
    widget->disconnect(this);
    m_bin.append(widget);
}

void Desk::emptyBin()
{
    while (!m_itemBin.isEmpty())
        delete m_itemBin.takeLast();
    while (!m_bin.isEmpty())
        delete m_bin.takeLast().data();
}

void Desk::replace(QWidget* widget)
{
    if (!m_widgets.removeOne(widget))
        return;
    if (Tree* tree = qobject_cast<Tree*>(widget)) {
        for (int i = m_shelf.size() - 1; i >= 0; --i) {
            if (m_shelf.at(i)->getMessageTreeWidget() == tree)
                m_itemBin.append(m_shelf.takeAt(i));
        }
        addTree();
    } else if (qobject_cast<MessageStatisticsWidget*>(widget)) {
        addStatistics();
    } else if (qobject_cast<EventLogTableWidget*>(widget)) {
        addTable();
    } else if (qobject_cast<MessageWidget*>(widget)) {
        addForm();
    } else if (FieldValueLabel* label = qobject_cast<FieldValueLabel*>(widget)) {
        addValueLabel();
        label->setTimeOut(-1);
    } else {
        // The editors are made together, and go together.
        m_editors.removeOne(widget);
        Q_FOREACH (QWidget* editor, m_editors) {
            m_widgets.removeOne(editor);
            putIntoBin(editor);
        }
        m_editors.clear();
        addEditors();
    }
    putIntoBin(widget);
}

void Desk::operateOnWidget(QWidget* widget)
{
    const Operations operations = {
        [&] { widget->setVisible(!widget->isVisible()); },
        [&] { widget->close(); },
        [&] {
            // Qt goes on with the native window that loses the focus, and this one's is deleted.
            if (m_eventLoops > 0 && widget->isWindow())
                return;
            widget->setParent(m_chance.coin() ? m_page : m_chance.coin() ? m_window : nullptr);
            widget->show();
        },
        [&] { widget->resize(50 + m_chance.below(400), 30 + m_chance.below(400)); },
        [&] { widget->setEnabled(!widget->isEnabled()); },
        [&] { widget->setFont(QFont(QString(), 6 + m_chance.below(12))); },
        [&] { widget->setLayoutDirection(m_chance.coin() ? Qt::RightToLeft : Qt::LeftToRight); },
        [&] { widget->setFocus(); },
        [&] {
            const QLatin1String style("* { padding: 1px; color: #123456; }");
            widget->setStyleSheet(m_chance.coin() ? QString() : style);
        },
        [&] { widget->repaint(); },
        [&] { replace(widget); },
    };
    doOneOf("widget", 11, operations);
}

bool Desk::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Show && qobject_cast<QMessageBox*>(object))
        QMetaObject::invokeMethod(object, "accept", Qt::QueuedConnection);
    return QObject::eventFilter(object, event);
}

static OtherLanguage* otherLanguage()
{
    static OtherLanguage language;
    return &language;
}

void Desk::resetProcess()
{
    QCoreApplication::removeTranslator(otherLanguage());
    QApplication::setStyle(QLatin1String("fusion"));
    Corvel::setConfidentialInformationDisplayEnabled(false);
    Corvel::setFloatingPointDecimals(-1);
}

void Desk::operateOnProcess()
{
    const int choice = m_calm ? 5 : m_chance.below(12);
    note("process", choice);
    const Operations operations = {
        [&] { QCoreApplication::installTranslator(otherLanguage()); },
        [&] { QCoreApplication::removeTranslator(otherLanguage()); },
        [&] { QApplication::setStyle(m_chance.pick(QStyleFactory::keys())); },
        [&] { Corvel::setConfidentialInformationDisplayEnabled(m_chance.coin()); },
        [&] { Corvel::setFloatingPointDecimals(m_chance.below(4) - 1); },
        [&] {
            ++m_eventLoops;
            QCoreApplication::processEvents();
            --m_eventLoops;
        },
    };
    perform(choice, operations);
}
