#ifndef FORMPROPERTIES_H
#define FORMPROPERTIES_H

#include <QObject>
#include <QString>
#include <QVariant>
#include <QVector>

class QWidget;

/**
 * What a form can say of a widget beside the properties of its class: the widgets themselves have no more properties
 * than those of Qt's that they extend. In a form, and of the widget, it is a dynamic property.
 */
struct FormProperty
{
    const char* name;
    QVariant value; ///< of a new widget: a text, a number or a truth value
    QString toolTip;
    /** Makes @p value hold for @p widget; null where the widget shows nothing of it in Qt Designer. */
    void (*apply)(QWidget* widget, const QVariant& value);
};

/** Makes what is written into such properties of a widget hold. */
class FormProperties : public QObject
{
public:
    /** Belongs to @p widget, which must be of the kind that the properties are for. */
    FormProperties(QWidget* widget, const QVector<FormProperty>& properties);

    bool eventFilter(QObject* watched, QEvent* event) override;

    /** What a new widget has of these, for a form's text. */
    static QString toXml(const QVector<FormProperty>& properties);
    /** How they are described and edited, for a form's text. */
    static QString specificationsToXml(const QVector<FormProperty>& properties);

private:
    QVector<FormProperty> m_properties;
};

#endif
