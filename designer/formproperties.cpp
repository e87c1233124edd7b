#include "formproperties.h"

#include <QDynamicPropertyChangeEvent>
#include <QWidget>

FormProperties::FormProperties(QWidget* widget, const QVector<FormProperty>& properties)
    : QObject(widget)
    , m_properties(properties)
{
    widget->installEventFilter(this);
}

bool FormProperties::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::DynamicPropertyChange || watched != parent())
        return false;
    const QByteArray name = static_cast<const QDynamicPropertyChangeEvent*>(event)->propertyName();
    for (const FormProperty& property : m_properties) {
        if (name != property.name)
            continue;
        const QVariant value = watched->property(name.constData());
        property.apply(static_cast<QWidget*>(watched), value.isValid() ? value : property.value);
    }
    return false;
}

static bool isText(const FormProperty& property)
{
    return property.value.userType() == QMetaType::QString;
}

QString FormProperties::toXml(const QVector<FormProperty>& properties)
{
    QString xml;
    for (const FormProperty& property : properties) {
        const bool isTruth = property.value.userType() == QMetaType::Bool;
        const QString type = QLatin1String(isText(property) ? "string" : isTruth ? "bool" : "number");
        xml += QStringLiteral("<property name=\"%1\" stdset=\"0\"><%2%3>%4</%2></property>")
                   .arg(QLatin1String(property.name), type,
                        isText(property) ? QStringLiteral(" notr=\"true\"") : QString(),
                        property.value.toString().toHtmlEscaped());
    }
    return xml;
}

QString FormProperties::specificationsToXml(const QVector<FormProperty>& properties)
{
    QString xml;
    for (const FormProperty& property : properties) {
        const QString name = QLatin1String(property.name);
        xml += QStringLiteral("<tooltip name=\"%1\">%2</tooltip>").arg(name, property.toolTip.toHtmlEscaped());
        if (isText(property)) // is none to be translated
            xml += QStringLiteral("<stringpropertyspecification name=\"%1\" type=\"singleline\" notr=\"true\"/>")
                       .arg(name);
    }
    return properties.isEmpty() ? xml : QStringLiteral("<propertyspecifications>%1</propertyspecifications>").arg(xml);
}
