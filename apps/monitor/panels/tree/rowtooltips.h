#ifndef ROWTOOLTIPS_H
#define ROWTOOLTIPS_H

#include <QObject>

class FieldInfo;
class MessageTreeWidget;
class SilenceWatch;
class TreeRow;

/** Tells, in tool tips, what the rows of the message tree mean. Texts are made when somebody asks for them. */
class RowToolTips : public QObject
{
    Q_OBJECT

public:
    /** @param silence  knows since when types are silent; may be null. Both borrowed. */
    RowToolTips(MessageTreeWidget* tree, const SilenceWatch* silence, QObject* parent = nullptr);

    /** The tool tip of a row, in rich text; empty for a null row. */
    QString textFor(const TreeRow& row) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString textForType(const TreeRow& row) const;
    QString textForField(const TreeRow& row) const;

    MessageTreeWidget* m_tree;
    const SilenceWatch* m_silence;
};

#endif
