#ifndef ADDRESSFORM_H
#define ADDRESSFORM_H

#include "byteinput.h"
#include "inputkind.h"

#include <QHash>
#include <QWidget>

class QComboBox;
class QFormLayout;

/** Asks where bytes come from: the kind of input, and what that kind wants to know. */
class AddressForm : public QWidget
{
    Q_OBJECT

public:
    explicit AddressForm(QWidget* parent = nullptr);

    /** What the form says now, which may be wrong. */
    InputAddress getAddress() const;
    void setAddress(const InputAddress& address);

    /** The room that the labels of all kinds need, so that others can stand in line with them. */
    int getLabelWidth() const;

Q_SIGNALS:
    /** Another kind was chosen, or another file. */
    void changed();

private:
    void showKind();
    void showFields(const InputAddress& values);
    QWidget* createEditor(const InputField& field, const QString& value);
    QWidget* createFileEditor(const InputField& field, const QString& value);
    QWidget* createListEditor(const InputField& field, const QString& value);

    QFormLayout* m_layout;
    QComboBox* m_kind;
    const InputKind* m_shown;
    QHash<QString, QWidget*> m_editors;                // that have the values, by field
    QHash<const InputKind*, InputAddress> m_addresses; // of the kinds that were shown before
};

#endif
