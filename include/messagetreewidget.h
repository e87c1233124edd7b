#ifndef CORVEL_MESSAGETREEWIDGET_H
#define CORVEL_MESSAGETREEWIDGET_H

#include "corvelgui_export.h"
#include "fieldinfo.h"

#include <QHash>
#include <QList>
#include <QTreeWidget>
#include <QVector>

class AbstractMessageTreeWidgetItem;
class Message;
class MessageInfo;
class MessageTreeColumn;
class QAction;
class QSettings;

// Of dataChanged() one form overrides Qt's: which one differs between the majors, so neither can say so.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Winconsistent-missing-override"
#endif

/**
 * A tree that shows the latest message of each of its message types, field by field, live.
 *
 * The application places a MessageTreeWidgetItem for each type of interest at the top level and feeds the tree. Which
 * columns are shown is configurable; secondary and virtual fields can be hidden. What the user expands is remembered
 * for the type or the field, for all trees of the process. A row of a type starts unfolded, also when columns come and
 * go, until somebody folds a row of the type, be it the user or QTreeWidgetItem::setExpanded(); a row of a field starts
 * folded. To begin with folded rows, fold each once when it is in the tree and unfolded.
 *
 * A new tree has no rows to fit its columns to, and columns that are added fit all to what there is. Call
 * resizeColumns() when the first rows are there.
 *
 * Many values a second are its purpose: texts of rows are stored at once, and the screen follows once for each pass of
 * the event loop.
 *
 * A type that is deleted leaves its rows empty, as long as the framework's types are QObjects, as in this one; see
 * docs/architecture.md.
 *
 * Whoever listens to the tree or draws for it may call any operation of it meanwhile, also processMessage(). What makes
 * all rows anew - other columns, other filters, reconfigureTopLevelAbstractMessageTreeWidgetItems() - is noted at once
 * and reaches the rows when the message was routed to the end, or the configuration under way is done. But the tree
 * itself must not be deleted by a slot that it calls; QObject::deleteLater() is for that.
 *
 * @code
 * MessageTreeWidget* tree = new MessageTreeWidget(parent);
 * tree->addTopLevelItem(new MessageTreeWidgetItem(tree, dialect->getMessageInfo("ATTITUDE")));
 * tree->reconfigureTopLevelAbstractMessageTreeWidgetItems();
 * tree->resizeColumns();
 * QObject::connect(source, SIGNAL(newMessage(const Message*)), tree, SLOT(processMessage(const Message*)));
 * @endcode
 */
class CORVELGUI_EXPORT MessageTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    /** What a column shows of each row. Any number from 0 to 999 can be a column type; those not listed are custom. */
    enum ColumnType : int
    {
        NameColumn = 0,
        RawValueColumn = 1, ///< the value as transmitted
        ValueColumn = 2,    ///< the value as its description interprets it
        TypeColumn = 3,
        CustomColumn1 = 4,
        CustomColumn2 = 5,
        CustomColumn3 = 6,
        CustomColumn4 = 7,
        CustomColumn5 = 8,
        CustomColumn6 = 9,
        CustomColumn7 = 10,
        CustomColumn8 = 11,
        CustomColumn9 = 12,
        CustomColumn10 = 13,
        NoColumn = 14 ///< a column of the tree widget that was added by other means and is left alone
    };

    /** A tree with the columns name, type and value. @p parent may be null. */
    explicit MessageTreeWidget(QWidget* parent = 0);
    virtual ~MessageTreeWidget();

    /** The name under which a column of this type is shown, translated. */
    static QString getDefaultColumnName(ColumnType type);
    /** The header text of a column of this type: what the application's column says, or else the default name. */
    QString getColumnName(ColumnType type) const;
    /** The column that shows @p type, which must not be negative; -1 when none does. */
    int getColumnIndex(ColumnType type);
    /** Whether a column shows @p type, which must not be negative. */
    bool hasColumn(ColumnType type);
    /** The types of the columns, from left to right. */
    QVector<ColumnType> getColumns() const;

    /**
     * Adds a column behind the others. A type that is shown already is refused with a warning box.
     *
     * @param type    from 0 to 999
     * @param update  fits the widths of the columns and fills the rows; false where more columns follow
     */
    void addColumn(ColumnType type, bool update);
    /** Removes all columns; @p update as for addColumn(). */
    void clearColumns(bool update);
    /** Shows exactly these columns, from left to right. A type that is repeated is refused as by addColumn(). */
    void setColumns(QVector<ColumnType> columns);
    /** Fits the width of every column to its contents. */
    void resizeColumns();

    /** The checkable action with which the user shows and hides the type column; owned by the tree. */
    QAction* getToggleTypeColumnAction();
    /** The same for the raw-value column. */
    QAction* getToggleRawValueColumnAction();
    /** All actions that show and hide a column, for a menu; behind the library's two, those of custom columns. */
    QVector<QAction*> getToggleColumnActions();

    /**
     * Says what columns of this type show. Without that they show a text that only names them.
     *
     * The column is shown where addColumn(), setColumns(), restoreSettings() or its action put it: set it before
     * settings are restored. Who sorts by it sorts anew with sortByColumn(); itemChanged() does not tell of it.
     *
     * @param type    any below 1000 but the library's own four and NoColumn
     * @param column  becomes the tree's own; a former one is deleted, so this must not be called by one. Null for none.
     */
    void setCustomColumn(ColumnType type, MessageTreeColumn* column);
    /** What was set for columns of this type; null when nothing was. */
    MessageTreeColumn* getCustomColumn(ColumnType type) const;
    /** Has the texts of that column read again where they are seen, and its header. */
    void updateCustomColumn(ColumnType type);

    bool mustShowVirtualFields() const;
    /** Whether fields of this role are shown without regard to what is below them. */
    bool mustShowFieldsWithRole(FieldInfo::Role role) const;

    /** The top-level rows that are rows of this library, in row order. */
    QList<AbstractMessageTreeWidgetItem*> getTopLevelAbstractMessageTreeWidgetItems();
    /**
     * Writes every row and expands it, following the columns and filters; to be called after rows were added, as by
     * addTopLevelItem(), which leaves them without a type and folded. AbstractMessageTreeWidgetItem::
     * configureInTreeWidget() does it for one.
     *
     * A call out of a slot that the tree calls while it routes a message or configures rows takes effect after that.
     */
    void reconfigureTopLevelAbstractMessageTreeWidgetItems();

    /** Whether a row that restores its expansion starts expanded, from what the user did last. Null gives false. */
    bool mustInitiallyBeExpanded(AbstractMessageTreeWidgetItem* item);

    /** Writes the columns and the state of the header under "columns" and "headerstate" in the current group. */
    void saveSettings(QSettings& settings);
    /** Restores what saveSettings() wrote; what is missing stays, but for the first column, which gets 150 pixels. */
    void restoreSettings(QSettings& settings);

    /**
     * Writes which types and fields the user last expanded, in any tree, under "expandedMessages" and "expandedFields"
     * in the current group: as path expressions, which name them in a later run too. What goes is forgotten. What the
     * user folded is deliberately not written: rows of such types start unfolded in the next run. An application that
     * wants them folded keeps a list of its own and folds the rows once.
     */
    void saveExpansionState(QSettings& settings);
    /**
     * Adds what saveExpansionState() wrote to what is remembered. Paths that now name nothing, or several things, are
     * dropped. Rows that are configured from then on follow.
     */
    void loadExpansionState(QSettings& settings);

    // The view's reaction to changed data: the first form is the virtual one of Qt 4, the second that of Qt 5 and 6.
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight);
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QVector<int>& roles);

public Q_SLOTS:
    /** Hands @p message to every top-level row; null clears the values of all. */
    void processMessage(const Message* message);
    void setShowVirtualFields(bool showVirtualFields);
    void setHideVirtualFields(bool hideVirtualFields);
    /** Hides fields of secondary role, except those that lead to a field that is shown. */
    void setShowPrimaryFieldsOnly(bool showPrimaryOnly);
    /** Sets the opposite of setShowPrimaryFieldsOnly(): true shows secondary fields. Deliberate and kept. */
    void setHideSecondaryFields(bool hideSecondary);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private Q_SLOTS:
    void toggleColumnActionTriggered(bool checked);
    void processItemExpandedOrCollapsed(QTreeWidgetItem* item);
    void forgetTopLevelRows(const QModelIndex& parent = QModelIndex());
    void leaveTopLevelRows();

private:
    Q_DISABLE_COPY(MessageTreeWidget)
    friend class AbstractMessageTreeWidgetItem;
    friend class RowHold;
    friend class TreeUpdate;

    static void rememberExpansion(const MessageInfo* info, bool expanded);
    static void rememberExpansion(const FieldInfo* field, bool expanded);
    static void forgetType(void* info, const QObject* object, bool show);
    static void forgetField(void* field, const QObject* object, bool show);
    void createActions();
    MessageTreeColumn* getCustomColumnAt(int column) const;
    void writeHeader(int column, ColumnType type);
    void noteCustomTexts(AbstractMessageTreeWidgetItem* row);
    bool noteChangedColumn(AbstractMessageTreeWidgetItem* row, int column);
    void addToggleAction(QAction* action);
    void translate();
    void reconfigureRows();
    void endUpdate();
    bool serveTogether(const QModelIndex& index);
    void followRowsOnScreen(bool repaintChanged);
    void repaintColumns(const QModelIndex& index, unsigned int columns, const QRect& rowRect);

    static QHash<const MessageInfo*, bool> sMessageInfoExpandedCollapsedMap;
    static QHash<const FieldInfo*, bool> sFieldInfoExpandedCollapsedMap;

    QVector<ColumnType> m_columns;
    QVector<int> m_columnIndices;
    QAction* m_toggleTypeColumnAction;
    QAction* m_toggleRawValueColumnAction;
    QVector<QAction*> m_toggleColumnActions;
    QHash<ColumnType, QAction*> m_columnToggleActions;
    bool m_showPrimaryFieldsOnly;
    bool m_showVirtualFields;

    // What getTopLevelAbstractMessageTreeWidgetItems() gives, while it is known: it is asked for every message. With
    // each row the one type whose messages concern it, or null when only the row knows that.
    QList<AbstractMessageTreeWidgetItem*> m_topLevelRows;
    QVector<const MessageInfo*> m_topLevelInfos;
    bool m_topLevelRowsKnown;
    bool m_rowsAreRemoved; // by this library; Qt has not finished
    unsigned int m_topLevelRowsChanges;
    int m_updates; // the calls under way that have to end before all rows are made anew
    // The row whose text changes now from one ordinary line to another; null otherwise.
    AbstractMessageTreeWidgetItem* m_rowBeingWritten;
    // The rows that were on the screen last bear this number.
    unsigned int m_screenNumber;
    bool m_repaintPosted;
    bool m_reconfigurationWanted; // when the last update is over
    short m_holds;                // the calls under way that have to end before a row is deleted
    QHash<ColumnType, MessageTreeColumn*> m_customColumns; // owned
};

#if defined(__clang__)
#pragma clang diagnostic pop
#endif

#endif
