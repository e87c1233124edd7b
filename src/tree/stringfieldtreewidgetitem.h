#ifndef STRINGFIELDTREEWIDGETITEM_H
#define STRINGFIELDTREEWIDGETITEM_H

#include "abstractfieldtreewidgetitem.h"

#include <QString>

/** The row of a repeated character field, which it shows as one text. */
class CORVELGUI_EXPORT StringFieldTreeWidgetItem : public AbstractFieldTreeWidgetItem
{
public:
    StringFieldTreeWidgetItem(MessageTreeWidget* treeWidget, const FieldInfo* field);
    virtual ~StringFieldTreeWidgetItem();

    /** A @p field that is not a repeated character field is reported and taken all the same. */
    void setFieldInfo(const FieldInfo* field) override;
    void clearValues() override;
    QString getNameText() override;
    QString getTypeText() override;
    QString getValueText() override;
    QString getRawValueText() override;
    void processMessage(const Message* message) override;

    QString getString() const;
    void setString(const QString& text);
    /** The text of the field in @p message; empty without a field or a message. */
    QString extractString(const Message* message) const;

private:
    Q_DISABLE_COPY(StringFieldTreeWidgetItem)

    QString m_string;
};

#endif
