#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "pathfixtures.h"
#include "testbase.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryFile>
#include <QTimer>

typedef MessageTreeWidget Tree;

static QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

/** Closes the warning boxes that come up, and keeps what they said. */
class BoxCloser : public QObject
{
    Q_OBJECT

public:
    BoxCloser()
    {
        connect(&m_timer, SIGNAL(timeout()), SLOT(closeBox()));
        m_timer.start(0);
    }
    QStringList texts() const { return m_texts; }

public Q_SLOTS:
    void closeBox()
    {
        if (QMessageBox* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            m_texts << box->text();
            box->accept();
        }
    }

private:
    QTimer m_timer;
    QStringList m_texts;
};

/** What a tree remembers across a restart. */
class tst_MessageTreeSettings : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void newTreeWritesItsColumns();
    void columnsComeBackFromAnyKindOfList_data();
    void columnsComeBackFromAnyKindOfList();
    void missingSettingsLeaveTheColumns();
    void headerComesBack();
    void damagedHeaderIsNoHarm();
    void repeatedColumnIsRefusedWithAWarning();
    void onlyExpandedStatesAreWritten();
    void expansionSurvivesARestart_data();
    void expansionSurvivesARestart();
    void pathsThatNameNothingOrSeveralAreDropped();
    void loadingNeverForgets();

private:
    void forgetEverything();
    static void expand(const char* rows);
    static QString expanded();

    QTemporaryFile m_file;
};

// The tree remembers types and fields by address for the whole process, so these stay.
static FormatInfo* s_format = nullptr;
static FormatInfo* s_other = nullptr;

static void addRepeated(MessageInfo* info, const char* name)
{
    info->addField(new TestFieldInfo(text(name), TestFieldInfo::Repeated));
}

void tst_MessageTreeSettings::initTestCase()
{
    static FormatInfo format(text("f"));
    static FormatInfo other(text("g/*"));
    s_format = &format;
    s_other = &other;
    MessageInfo* inner = addTestType(&format, "Inner", "", false);
    addRepeated(inner, "deep");
    MessageInfo* type = addTestType(&format, "A", "x");
    addRepeated(type, "list");
    type->addField(new TestFieldInfo(text("sub"), 0, FieldType(inner)));
    addRepeated(addTestType(&format, "B", ""), "list");
    addRepeated(addTestType(&other, "A", ""), "list");
    FormatRegistry::getInstance()->addFormat(&format);
    FormatRegistry::getInstance()->addFormat(&other);
    QVERIFY(m_file.open());
}

/** A tree with a row for every main type, as configured from what is remembered. */
static void fill(Tree* tree)
{
    const QVector<const FormatInfo*> formats = QVector<const FormatInfo*>() << s_format << s_other;
    Q_FOREACH (const FormatInfo* format, formats) {
        Q_FOREACH (const MessageInfo* info, format->getMessageInfos()) {
            if (info->isMain())
                tree->addTopLevelItem(new MessageTreeWidgetItem(tree, info));
        }
    }
    tree->reconfigureTopLevelAbstractMessageTreeWidgetItems();
}

/** Where a row stands: "A.sub.deep", with the number of the top-level row before it. */
static QString pathOf(QTreeWidgetItem* row)
{
    if (!row->parent())
        return QString::number(row->treeWidget()->indexOfTopLevelItem(row)) + row->text(0);
    return pathOf(row->parent()) + QLatin1Char('.') + row->text(0);
}

static QList<QTreeWidgetItem*> rowsOf(const Tree& tree)
{
    QList<QTreeWidgetItem*> rows;
    for (QTreeWidgetItemIterator it(const_cast<Tree*>(&tree)); *it; ++it)
        rows << *it;
    return rows;
}

/** Lets the user expand exactly these rows, the others being collapsed last. */
void tst_MessageTreeSettings::expand(const char* rows)
{
    const QStringList paths = text(rows).split(QLatin1Char(' '));
    Tree tree;
    fill(&tree);
    Q_FOREACH (QTreeWidgetItem* row, rowsOf(tree)) {
        row->setExpanded(true);
        row->setExpanded(false);
        row->setExpanded(paths.contains(pathOf(row)));
    }
}

/** The rows that a new tree expands. */
QString tst_MessageTreeSettings::expanded()
{
    Tree tree;
    fill(&tree);
    QStringList paths;
    Q_FOREACH (QTreeWidgetItem* row, rowsOf(tree)) {
        if (row->isExpanded())
            paths << pathOf(row);
    }
    return paths.join(QLatin1String(" "));
}

void tst_MessageTreeSettings::forgetEverything()
{
    QSettings(m_file.fileName(), QSettings::IniFormat).clear();
    expand("");
}

static QString columnsOf(const Tree& tree)
{
    QStringList columns;
    Q_FOREACH (Tree::ColumnType type, tree.getColumns())
        columns << QString::number(int(type));
    return columns.join(QLatin1String(","));
}

void tst_MessageTreeSettings::newTreeWritesItsColumns()
{
    forgetEverything();
    QSettings settings(m_file.fileName(), QSettings::IniFormat);
    settings.beginGroup(text("any/group"));
    Tree tree;
    tree.saveSettings(settings);
    QCOMPARE(settings.value(text("columns")).toList(), QList<QVariant>() << 0 << 3 << 2);
    QCOMPARE(settings.value(text("headerstate")).toByteArray(), tree.header()->saveState());
    settings.endGroup();
    QCOMPARE(settings.allKeys(), QStringList() << text("any/group/columns") << text("any/group/headerstate"));
}

void tst_MessageTreeSettings::columnsComeBackFromAnyKindOfList_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("throughFile");
    QTest::addColumn<QString>("columns");
    const QVariant two = QVariant(QList<QVariant>() << 0 << 1);
    const QVariant one = QVariant(QList<QVariant>() << 2);
    QTest::newRow("as set") << two << false << text("0,1");
    QTest::newRow("from a file") << two << true << text("0,1");
    QTest::newRow("one, as set") << one << false << text("2");
    QTest::newRow("one, from a file") << one << true << text("2");
    QTest::newRow("none, from a file") << QVariant(QList<QVariant>()) << true << QString();
    QTest::newRow("texts") << QVariant(QStringList() << text("3") << text("0")) << false << text("3,0");
    QTest::newRow("one text") << QVariant(text("3")) << true << text("3");
    QTest::newRow("a number") << QVariant(3) << false << text("3");
    QTest::newRow("any type") << QVariant(QList<QVariant>() << 0 << 13 << 14 << 999) << true << text("0,13,14,999");
    QTest::newRow("no type") << QVariant(QList<QVariant>() << 0 << 2147483647) << true << text("0");
}

void tst_MessageTreeSettings::columnsComeBackFromAnyKindOfList()
{
    forgetEverything();
    QFETCH(QVariant, stored);
    QFETCH(bool, throughFile);
    {
        QSettings settings(m_file.fileName(), QSettings::IniFormat);
        settings.setValue(text("columns"), stored);
        if (!throughFile) {
            Tree tree;
            tree.restoreSettings(settings);
            QTEST(columnsOf(tree), "columns");
        }
    }
    QSettings settings(m_file.fileName(), QSettings::IniFormat);
    Tree tree;
    tree.restoreSettings(settings);
    QTEST(columnsOf(tree), "columns");
    QCOMPARE(tree.getToggleRawValueColumnAction()->isChecked(), columnsOf(tree) == text("0,1"));
    QCOMPARE(tree.getToggleTypeColumnAction()->isChecked(),
             columnsOf(tree).contains(QLatin1Char('3')) && !columnsOf(tree).contains(text("13")));
}

void tst_MessageTreeSettings::missingSettingsLeaveTheColumns()
{
    forgetEverything();
    QSettings settings(m_file.fileName(), QSettings::IniFormat);
    Tree tree;
    tree.setColumnWidth(0, 77);
    tree.setColumnWidth(1, 78);
    tree.restoreSettings(settings);
    QCOMPARE(columnsOf(tree), text("0,3,2"));
    QCOMPARE(tree.columnWidth(0), 150);
    QCOMPARE(tree.columnWidth(1), 78);
    tree.setColumnWidth(0, 77);
    settings.setValue(text("headerstate"), QByteArray());
    tree.restoreSettings(settings);
    QCOMPARE(tree.columnWidth(0), 150);
}

void tst_MessageTreeSettings::headerComesBack()
{
    forgetEverything();
    {
        QSettings settings(m_file.fileName(), QSettings::IniFormat);
        Tree tree;
        tree.setColumns(QVector<Tree::ColumnType>()
                        << Tree::NameColumn << Tree::RawValueColumn << Tree::ValueColumn << Tree::CustomColumn1);
        tree.setColumnWidth(0, 211);
        tree.setColumnWidth(3, 90);
        tree.header()->moveSection(3, 1);
        tree.setColumnHidden(1, true);
        tree.saveSettings(settings);
    }
    QSettings settings(m_file.fileName(), QSettings::IniFormat);
    Tree tree;
    tree.restoreSettings(settings);
    QCOMPARE(columnsOf(tree), text("0,1,2,4"));
    QCOMPARE(tree.columnWidth(0), 211);
    QCOMPARE(tree.columnWidth(3), 90);
    QCOMPARE(tree.header()->visualIndex(3), 1);
    QVERIFY(tree.isColumnHidden(1));
    QCOMPARE(tree.headerItem()->text(1), text("Raw value"));
}

void tst_MessageTreeSettings::damagedHeaderIsNoHarm()
{
    forgetEverything();
    QSettings settings(m_file.fileName(), QSettings::IniFormat);
    settings.setValue(text("columns"), text("1"));
    settings.setValue(text("headerstate"), QByteArray("no state of a header"));
    Tree tree;
    tree.restoreSettings(settings);
    QCOMPARE(columnsOf(tree), text("1"));
}

void tst_MessageTreeSettings::repeatedColumnIsRefusedWithAWarning()
{
    forgetEverything();
    QSettings settings(m_file.fileName(), QSettings::IniFormat);
    settings.setValue(text("columns"), QStringList() << text("0") << text("2") << text("0") << text("3"));
    Tree tree;
    BoxCloser closer;
    tree.restoreSettings(settings);
    QCOMPARE(columnsOf(tree), text("0,2,3"));
    QCOMPARE(closer.texts().size(), 1);
    takeWarnings(); // of platforms that are no real screens, about the box
}

void tst_MessageTreeSettings::onlyExpandedStatesAreWritten()
{
    forgetEverything();
    QSettings settings(m_file.fileName(), QSettings::IniFormat);
    expand("0A");
    Tree tree;
    tree.saveExpansionState(settings);
    QCOMPARE(settings.value(text("expandedMessages")).toStringList(), QStringList(text("f/A")));
    QCOMPARE(settings.value(text("expandedFields")).toStringList(), QStringList());
    QVERIFY(settings.contains(text("expandedFields")));
    expand("1B.list 2A.list");
    tree.saveExpansionState(settings);
    QCOMPARE(settings.value(text("expandedMessages")).toStringList(), QStringList());
    QStringList fields = settings.value(text("expandedFields")).toStringList();
    fields.sort();
    QCOMPARE(fields, QStringList() << text("f/B/list") << text("g\\/\\*/A/list"));
}

void tst_MessageTreeSettings::expansionSurvivesARestart_data()
{
    QTest::addColumn<QString>("rows");
    QTest::newRow("nothing") << QString();
    QTest::newRow("one type") << text("0A");
    QTest::newRow("one field") << text("0A.list");
    QTest::newRow("a type and a field of another format") << text("0A 2A 2A.list");
    QTest::newRow("within a sub-message") << text("0A 0A.list 0A.sub 0A.sub.deep 1B");
    QTest::newRow("all") << text("0A 0A.list 0A.sub 0A.sub.deep 1B 1B.list 2A 2A.list");
}

void tst_MessageTreeSettings::expansionSurvivesARestart()
{
    forgetEverything();
    QFETCH(QString, rows);
    expand(qPrintable(rows));
    QCOMPARE(expanded(), rows);
    {
        QSettings settings(m_file.fileName(), QSettings::IniFormat);
        Tree().saveExpansionState(settings);
    }
    expand("");
    QCOMPARE(expanded(), QString());
    QSettings settings(m_file.fileName(), QSettings::IniFormat);
    Tree().loadExpansionState(settings);
    QCOMPARE(expanded(), rows);
}

void tst_MessageTreeSettings::pathsThatNameNothingOrSeveralAreDropped()
{
    forgetEverything();
    QSettings settings(m_file.fileName(), QSettings::IniFormat);
    settings.setValue(text("expandedMessages"),
                      QStringList() << text("*/A") << text("f/gone") << text("[[") << QString() << text("f/B"));
    settings.setValue(text("expandedFields"),
                      QStringList() << text("*/A/list") << text("f/A/gone") << text("f/A\\") << text("f/A/list"));
    Tree tree;
    tree.loadExpansionState(settings);
    QCOMPARE(expanded(), text("0A.list 1B"));
    settings.clear();
    tree.loadExpansionState(settings);
    QCOMPARE(expanded(), text("0A.list 1B"));
}

void tst_MessageTreeSettings::loadingNeverForgets()
{
    forgetEverything();
    QSettings settings(m_file.fileName(), QSettings::IniFormat);
    settings.setValue(text("expandedMessages"), text("f/B")); // one text, not a list
    expand("0A");
    Tree tree;
    tree.loadExpansionState(settings);
    QCOMPARE(expanded(), text("0A 1B"));
}

QTEST_MAIN(tst_MessageTreeSettings)

#include "tst_messagetreesettings.moc"
