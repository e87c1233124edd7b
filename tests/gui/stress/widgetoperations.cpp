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
    if (Tree* tree = qobject_cast<Tree*>(widget)) {
        if (!m_trees.removeOne(tree))
            return;
        for (int i = m_shelf.size() - 1; i >= 0; --i) {
            if (m_shelf.at(i)->getMessageTreeWidget() == tree)
                m_itemBin.append(m_shelf.takeAt(i));
        }
        addTree();
    } else if (MessageStatisticsWidget* statistics = qobject_cast<MessageStatisticsWidget*>(widget)) {
        if (m_statistics.removeOne(statistics))
            addStatistics();
    } else if (EventLogTableWidget* table = qobject_cast<EventLogTableWidget*>(widget)) {
        if (m_tables.removeOne(table))
            addTable();
    } else if (MessageWidget* form = qobject_cast<MessageWidget*>(widget)) {
        if (m_forms.removeOne(form))
            addForm();
    } else if (FieldValueLabel* label = qobject_cast<FieldValueLabel*>(widget)) {
        if (m_valueLabels.removeOne(label))
            addValueLabel();
        label->setTimeOut(-1);
    } else {
        // The editors are made together, and go together.
        if (m_editors.contains(widget)) {
            Q_FOREACH (QWidget* editor, m_editors)
                putIntoBin(editor);
            m_editors.clear();
            addEditors();
        }
        return;
    }
    putIntoBin(widget);
}

void Desk::operateOnWidget(QWidget* widget)
{
    const int choice = m_chance.below(11);
    note("widget", choice);
    switch (choice) {
    case 0:
        widget->setVisible(!widget->isVisible());
        break;
    case 1:
        widget->close();
        break;
    case 2:
        widget->setParent(m_chance.coin() ? m_page : m_chance.coin() ? m_window : nullptr);
        widget->show();
        break;
    case 3:
        widget->resize(50 + m_chance.below(400), 30 + m_chance.below(400));
        break;
    case 4:
        widget->setEnabled(!widget->isEnabled());
        break;
    case 5:
        widget->setFont(QFont(QString(), 6 + m_chance.below(12)));
        break;
    case 6:
        widget->setLayoutDirection(m_chance.coin() ? Qt::RightToLeft : Qt::LeftToRight);
        break;
    case 7:
        widget->setFocus();
        break;
    case 8:
        widget->setStyleSheet(m_chance.coin() ? QString() : QLatin1String("* { padding: 1px; color: #123456; }"));
        break;
    case 9:
        widget->repaint();
        break;
    default:
        replace(widget);
        break;
    }
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
    switch (choice) {
    case 0:
        QCoreApplication::installTranslator(otherLanguage());
        break;
    case 1:
        QCoreApplication::removeTranslator(otherLanguage());
        break;
    case 2:
        QApplication::setStyle(m_chance.pick(QStyleFactory::keys()));
        break;
    case 3:
        Corvel::setConfidentialInformationDisplayEnabled(m_chance.coin());
        break;
    case 4:
        Corvel::setFloatingPointDecimals(m_chance.below(4) - 1);
        break;
    default:
        QCoreApplication::processEvents();
        break;
    }
}
