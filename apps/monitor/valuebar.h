#ifndef VALUEBAR_H
#define VALUEBAR_H

#include <QVector>
#include <QWidget>

class FieldInfo;
class FieldValueLabel;
class LatestMessageSource;
class MessageInfo;
class QDoubleSpinBox;
class QHBoxLayout;
class QLabel;
class QMenu;

/** A row of large live values that the user picks, with one time-out for all. */
class ValueBar : public QWidget
{
    Q_OBJECT

public:
    /** @param source  whose messages to show; borrowed */
    explicit ValueBar(LatestMessageSource* source, QWidget* parent = nullptr);
    ~ValueBar() override;

    /** Adds the field, unless it is shown already. */
    void addField(const FieldInfo* field);
    void removeAll();

    /** The fields shown, in order. */
    QVector<const FieldInfo*> getFields() const;

    /** The types whose fields the "Add value" menu offers. */
    void setOfferedTypes(const QVector<const MessageInfo*>& infos) { m_offered = infos; }

private:
    struct Value
    {
        const FieldInfo* field;
        QWidget* box;
        FieldValueLabel* label;
    };

    void removeField(const FieldInfo* field);
    void release(const Value& value);
    void fillMenu();
    void applyTimeOut();
    int timeOutMilliseconds() const;

    LatestMessageSource* m_source;
    QHBoxLayout* m_layout;
    QMenu* m_menu;
    QDoubleSpinBox* m_timeOut;
    QLabel* m_hint;
    QVector<Value> m_values;
    QVector<const MessageInfo*> m_offered;
};

#endif
