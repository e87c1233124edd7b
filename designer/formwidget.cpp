#include "formwidget.h"

#include <QComboBox>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPixmap>
#include <QTableWidget>
#include <QTreeWidget>

FormWidget::FormWidget(const char* className, const char* extends, const QString& toolTip, const QSize& size,
                       Create create, const QVector<FormProperty>& properties)
    : m_className(QLatin1String(className))
    , m_extends(QLatin1String(extends))
    , m_toolTip(toolTip)
    , m_size(size)
    , m_create(create)
    , m_properties(properties)
    , m_isInDesigner(false)
{
}

QIcon FormWidget::icon() const
{
    // Drawn, so that it is sharp at any size: rows for views, a field for what shows or takes one text.
    QIcon icon;
    for (const int side : {16, 22, 32, 64}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(side / 16.0, side / 16.0);
        const QColor colour(0x1F, 0x6F, 0xB2);
        painter.setPen(QPen(colour, 1));
        painter.setBrush(Qt::white);
        const bool isView = m_size.height() > 40;
        painter.drawRoundedRect(isView ? QRectF(0.5, 1.5, 15, 13) : QRectF(0.5, 4.5, 15, 7), 2, 2);
        painter.setPen(QPen(colour, 1.4, Qt::SolidLine, Qt::RoundCap));
        if (!isView) {
            painter.drawLine(QPointF(3, 8), QPointF(8, 8));
        } else {
            const bool isTree = m_extends == QLatin1String("QTreeWidget");
            for (int row = 0; row < 3; ++row) {
                const double y = 4.5 + 3.5 * row;
                const double x = isTree && row > 0 ? 5.5 : 3;
                painter.drawLine(QPointF(x, y), QPointF(x + 3, y));
                painter.drawLine(QPointF(10.5, y), QPointF(13, y));
            }
        }
        if (m_className == QLatin1String("PathExpressionComboBox"))
            painter.drawPolyline(QPolygonF() << QPointF(10.5, 7) << QPointF(12, 8.8) << QPointF(13.5, 7));
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

static void showPath(QWidget* widget, const QVariant& path)
{
    if (QLabel* const label = qobject_cast<QLabel*>(widget))
        label->setText(path.toString().isEmpty() ? QLatin1String(widget->metaObject()->className()) : path.toString());
    else if (QLineEdit* const edit = qobject_cast<QLineEdit*>(widget))
        edit->setText(path.toString());
}

QWidget* FormWidget::createWidget(QWidget* parent)
{
    QWidget* const widget = m_create(parent);
    if (!m_isInDesigner) {
        new FormProperties(widget, m_properties);
        return widget;
    }
    // There everything that can be asked of a widget is written into the form, so it is shown what the form says, and
    // nothing is made of it.
    QVector<FormProperty> shown;
    for (const FormProperty& property : m_properties)
        if (qstrcmp(property.name, "path") == 0)
            shown << FormProperty{property.name, property.value, property.toolTip, &showPath};
    new FormProperties(widget, shown);
    if (qobject_cast<QLabel*>(widget))
        showPath(widget, QString());
    if (QTreeWidget* const tree = qobject_cast<QTreeWidget*>(widget))
        tree->setColumnCount(0);
    else if (QTableWidget* const table = qobject_cast<QTableWidget*>(widget))
        table->setColumnCount(0);
    else if (QListWidget* const list = qobject_cast<QListWidget*>(widget))
        list->clear();
    else if (QComboBox* const box = qobject_cast<QComboBox*>(widget))
        box->clear();
    if (QAbstractScrollArea* const view = qobject_cast<QAbstractScrollArea*>(widget))
        new QLabel(m_className, view->viewport()); // else nobody sees what it is
    return widget;
}

QString FormWidget::domXml() const
{
    const QString objectName = m_className.left(1).toLower() + m_className.mid(1);
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\">"
                          "<property name=\"geometry\"><rect><x>0</x><y>0</y><width>%3</width><height>%4</height>"
                          "</rect></property>%6</widget>"
                          "<customwidgets><customwidget><class>%1</class><extends>%5</extends>%7</customwidget>"
                          "</customwidgets></ui>")
        .arg(m_className, objectName)
        .arg(m_size.width())
        .arg(m_size.height())
        .arg(m_extends, FormProperties::toXml(m_properties), FormProperties::specificationsToXml(m_properties));
}
