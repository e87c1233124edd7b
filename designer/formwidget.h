#ifndef FORMWIDGET_H
#define FORMWIDGET_H

#include "formproperties.h"

#include <QList>
#include <QObject>
#include <QSize>
#include <QString>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

/** What Qt Designer, and whoever loads its forms, knows of one widget of the library. */
class FormWidget : public QDesignerCustomWidgetInterface
{
public:
    /** Makes the widget as a form can: with @p parent, which may be null, and without anything of an application's. */
    typedef QWidget* (*Create)(QWidget* parent);

    /**
     * @param className   as the form names it; its header is called so in small letters
     * @param extends     the class of Qt's whose properties it has
     * @param toolTip     what it is for
     * @param size        pixels of one that is put on a form
     * @param create      makes it
     * @param properties  what a form can say of it beside those
     */
    FormWidget(const char* className, const char* extends, const QString& toolTip, const QSize& size, Create create,
               const QVector<FormProperty>& properties = QVector<FormProperty>());

    QString name() const override { return m_className; }
    QString group() const override { return QStringLiteral("Corvel"); }
    QString toolTip() const override { return m_toolTip; }
    QString whatsThis() const override { return m_toolTip; }
    QString includeFile() const override { return m_className.toLower() + QLatin1String(".h"); }
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    /** Qt Designer calls this, which writes columns and entries of views into forms: there they have none. */
    void initialize(QDesignerFormEditorInterface*) override { m_isInDesigner = true; }
    bool isInitialized() const override { return m_isInDesigner; }
    QWidget* createWidget(QWidget* parent) override;
    QString domXml() const override;

private:
    QString m_className;
    QString m_extends;
    QString m_toolTip;
    QSize m_size;
    Create m_create;
    QVector<FormProperty> m_properties;
    bool m_isInDesigner;
};

/** The plugin: all widgets of the library. */
class FormWidgets : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    explicit FormWidgets(QObject* parent = nullptr);
    ~FormWidgets() override;

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override { return m_widgets; }

private:
    QList<QDesignerCustomWidgetInterface*> m_widgets;
};

#endif
