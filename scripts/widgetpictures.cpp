// Shows each widget of the library with what a recording brings, and saves a picture of it. For
// scripts/widget-pictures.
//
// usage: widget_pictures FOLDER RECORDING.tlog

#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "formatregistry.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "messagewidget.h"
#include "pathexpressionassistant.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlabel.h"
#include "pathexpressionlineedit.h"
#include "pathexpressionlistwidget.h"
#include "receptionmonitor.h"
#include "streamsource.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QEventLoop>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace
{

/** A folder for pictures, each called after a class. */
class Pictures
{
public:
    explicit Pictures(const QString& folder)
        : m_folder(folder)
    {
    }

    void save(QWidget* widget, const QSize& size)
    {
        show(widget, size);
        save(widget, widget->grab());
    }

    /** As it looks when somebody chooses. */
    void saveOpen(QComboBox* box, const QSize& size)
    {
        show(box, size);
        box->showPopup();
        QApplication::processEvents();
        QWidget* const popup = box->view()->window();
        const QPixmap above = box->grab();
        const QPixmap below = popup->grab();
        QPixmap both(qMax(above.width(), below.width()), above.height() + below.height());
        both.fill(Qt::white);
        QPainter painter(&both);
        painter.drawPixmap(0, 0, above);
        painter.drawPixmap(0, above.height(), below);
        painter.end();
        box->hidePopup();
        save(box, both);
    }

    /** As it looks when somebody types into @p edit, in the middle of @p window. */
    void saveTyped(QWidget* window, QLineEdit* edit, const QString& text, const QString& name)
    {
        show(window, window->sizeHint());
        window->activateWindow();
        edit->setFocus();
        for (const QChar letter : text) {
            QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
            QApplication::sendEvent(edit, &key);
        }
        QApplication::processEvents();
        QPixmap picture = window->grab();
        const QWidget* const popup = edit->completer()->popup();
        if (!popup->isVisible()) {
            std::fprintf(stderr, "nothing is offered for \"%s\"\n", qPrintable(text));
            m_isGood = false;
        }
        QPainter painter(&picture);
        painter.drawPixmap(edit->mapTo(window, QPoint(0, edit->height())), edit->completer()->popup()->grab());
        painter.end();
        edit->completer()->popup()->hide();
        save(name, picture);
    }

    bool isGood() const { return m_isGood; }

private:
    static void show(QWidget* widget, const QSize& size)
    {
        widget->resize(size);
        widget->show();
        QApplication::processEvents();
    }

    void save(const QWidget* widget, const QPixmap& picture)
    {
        save(QString::fromLatin1(widget->metaObject()->className()).toLower(), picture);
    }

    void save(const QString& name, const QPixmap& picture)
    {
        if (!picture.save(m_folder + QLatin1Char('/') + name + QLatin1String(".png"))) {
            std::fprintf(stderr, "%s.png cannot be written to %s\n", qPrintable(name), qPrintable(m_folder));
            m_isGood = false;
        }
    }

    QString m_folder;
    bool m_isGood = true;
};

void fitColumns(QTreeWidget* tree)
{
    for (int column = 0; column < tree->columnCount(); ++column)
        tree->resizeColumnToContents(column);
}

MessageTreeWidgetItem* addRow(MessageTreeWidget* tree, const MavlinkDialect& dialect, const QString& type, bool isOpen)
{
    MessageTreeWidgetItem* const row = new MessageTreeWidgetItem(tree, dialect.getMessageInfo(type));
    row->setInitialExpansionPolicy(isOpen ? AbstractMessageTreeWidgetItem::ExpandInitially
                                          : AbstractMessageTreeWidgetItem::CollapseInitially);
    tree->addTopLevelItem(row);
    return row;
}

/** Two lines with help: of one it is told what is wrong, and below the other there is room for what is offered. */
void saveAssistant(Pictures* pictures, const QString& name)
{
    QWidget window;
    QGridLayout* const layout = new QGridLayout(&window);
    QLineEdit* const malformed = new QLineEdit(QStringLiteral("corvel/ATTI*/roll"));
    QLabel* const problem = new QLabel;
    PathExpressionAssistant* const assistant = new PathExpressionAssistant(malformed);
    problem->setText(assistant->getProblem());
    PathExpression expression;
    QLineEdit* const typed = new PathExpressionLineEdit(&expression);
    typed->setMinimumWidth(420);
    new PathExpressionAssistant(typed);
    layout->addWidget(malformed);
    layout->addWidget(problem);
    layout->addWidget(typed);
    layout->setRowMinimumHeight(3, 104);
    pictures->saveTyped(&window, typed, QStringLiteral("corvel/ATTITUDE/"), name);
}

QPalette darkPalette()
{
    QPalette palette(QColor(0x2b, 0x2b, 0x2b), QColor(0x24, 0x24, 0x24));
    palette.setColor(QPalette::Base, QColor(0x1b, 0x1b, 0x1b));
    palette.setColor(QPalette::Highlight, QColor(0x1f, 0x6f, 0xb2));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: widget_pictures FOLDER RECORDING.tlog\n");
        return 1;
    }
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
    FormatRegistry::getInstance()->addFormat(dialect.get());
    StreamSource source(ByteInput::create(InputAddress::ofFile(arguments[2])),
                        new MavlinkStreamDecoder(dialect.get(), MavlinkStreamDecoder::TlogLayout));
    StreamSource::Playback playback;
    playback.factor = 0;
    source.setPlayback(playback);
    MessageStatisticsCoordinator coordinator;
    EventLog log;
    ReceptionMonitor monitor(&coordinator, &log);
    monitor.follow(&source, QStringLiteral("flight"));

    MessageTreeWidget tree;
    addRow(&tree, *dialect, QStringLiteral("HEARTBEAT"), false);
    addRow(&tree, *dialect, QStringLiteral("ATTITUDE"), true);
    addRow(&tree, *dialect, QStringLiteral("GPS_RAW_INT"), true);
    addRow(&tree, *dialect, QStringLiteral("VFR_HUD"), false);
    tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    QObject::connect(&source, SIGNAL(newMessage(const Message*)), &tree, SLOT(processMessage(const Message*)));
    MessageStatisticsWidget statistics(&coordinator, nullptr);
    EventLogTableWidget events(&log, nullptr);
    const MessageInfo* const attitude = dialect->getMessageInfo(QStringLiteral("ATTITUDE"));
    MessageWidget form(nullptr, attitude);
    QObject::connect(&source, SIGNAL(newMessage(const Message*)), &form, SLOT(processMessage(const Message*)));
    FieldValueLabel label(attitude->getFieldInfo(QStringLiteral("yaw")), &source);

    PathExpression types;
    types.setString(QStringLiteral("corvel"));
    PathExpression expression;
    expression.setString(QStringLiteral("corvel/ATTITUDE/roll"));
    PathExpressionLabel expressionLabel(&expression);
    PathExpressionLineEdit lineEdit(&expression);
    PathExpression fields;
    fields.setString(QStringLiteral("corvel/ATTITUDE"));
    PathExpressionComboBox comboBox(&expression, PathExpression::FieldPart, &fields);
    PathExpressionListWidget listWidget(&expression, PathExpression::MessagePart, &types);

    QEventLoop loop;
    QTimer::singleShot(60000, &loop, SLOT(quit())); // for a recording without an end
    QObject::connect(&source, &StreamSource::stateChanged, &loop, [&](int state) {
        if (state == StreamSource::Finished || state == StreamSource::Failed)
            loop.quit();
    });
    source.start();
    loop.exec();
    if (source.getState() != StreamSource::Finished) {
        std::fprintf(stderr, "%s was not read to its end: %s\n", qPrintable(arguments[2]),
                     qPrintable(source.getErrorString()));
        return 1;
    }

    statistics.updateTree();
    statistics.expandToDepth(0);
    for (QTreeWidgetItem* row :
         statistics.findItems(QStringLiteral("HEARTBEAT"), Qt::MatchStartsWith | Qt::MatchRecursive))
        if (MessageStatisticsTreeWidgetItem* const type = dynamic_cast<MessageStatisticsTreeWidgetItem*>(row))
            type->fullExpand();
    for (QTreeWidget* view : {static_cast<QTreeWidget*>(&tree), static_cast<QTreeWidget*>(&statistics)})
        fitColumns(view);
    events.resizeColumnsToContents();

    Pictures pictures(arguments[1]);
    pictures.save(&tree, QSize(640, 400));
    pictures.save(&statistics, QSize(720, 380));
    pictures.save(&events, QSize(480, 200));
    pictures.save(&form, form.sizeHint());
    label.setMargin(4);
    pictures.save(&label, label.sizeHint());
    expressionLabel.setMargin(4);
    pictures.save(&expressionLabel, expressionLabel.sizeHint());
    pictures.save(&lineEdit, QSize(240, lineEdit.sizeHint().height()));
    pictures.save(&listWidget, QSize(240, 180));
    pictures.saveOpen(&comboBox, comboBox.sizeHint());
    saveAssistant(&pictures, QStringLiteral("pathexpressionassistant"));
    QApplication::setPalette(darkPalette());
    saveAssistant(&pictures, QStringLiteral("pathexpressionassistant-dark"));
    return pictures.isGood() ? 0 : 1;
}
