#include "pathfixtures.h"
#include "testbase.h"
#include "treefixtures.h"

#include <QAction>
#include <QHeaderView>
#include <QSettings>
#include <QTemporaryFile>

/** What a tree remembers across a restart. */
class tst_MessageTreeSettings : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void columnsComeBackFromAnyKindOfList();
    void headerComesBack();
    void missingOrDamagedSettingsAreNoHarm();
    void onlyExpandedStatesAreWritten();
    void expansionSurvivesARestart();
    void pathsThatNameNothingOrSeveralAreDropped();

private:
    QString emptyFile();

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
class FilledTree : public Tree
{
public:
    FilledTree()
    {
        const QVector<const FormatInfo*> formats = QVector<const FormatInfo*>() << s_format << s_other;
        Q_FOREACH (const FormatInfo* format, formats) {
            Q_FOREACH (const MessageInfo* info, format->getMessageInfos()) {
                if (info->isMain())
                    addTopLevelItem(new MessageTreeWidgetItem(this, info));
            }
        }
        reconfigureTopLevelAbstractMessageTreeWidgetItems();
    }
};

/** Lets the user expand the rows with a plus, from top to bottom, and collapse all others. */
static void expand(const QString& rows)
{
    const QStringList names = rows.split(QLatin1Char(' '));
    FilledTree tree;
    int number = 0;
    for (QTreeWidgetItemIterator row(&tree); *row; ++row) {
        (*row)->setExpanded(true);
        (*row)->setExpanded(false);
        (*row)->setExpanded(names.value(number++).endsWith(QLatin1Char('+')));
    }
}

/** The rows of a new tree, with a plus behind those that it expands. */
static QString expanded()
{
    FilledTree tree;
    return expansionText(&tree);
}

/** The name of a file without settings; what the process remembers is forgotten, too. */
QString tst_MessageTreeSettings::emptyFile()
{
    QSettings(m_file.fileName(), QSettings::IniFormat).clear();
    expand(QString());
    return m_file.fileName();
}

void tst_MessageTreeSettings::columnsComeBackFromAnyKindOfList()
{
    const struct
    {
        QVariant stored;
        const char* columns;
    } rows[] = {{QList<QVariant>() << 0 << 1, "0,1"},
                {QList<QVariant>() << 2, "2"},
                {QList<QVariant>(), ""},
                {lines("3\n0"), "3,0"},
                {text("3"), "3"},
                {3, "3"},
                {QList<QVariant>() << 0 << 13 << 14 << 999 << 1000000, "0,13,14,999,1000000"},
                {QList<QVariant>() << 0 << 1000001,
                 "0 MessageTreeWidget::restoreSettings: there is no column type 1000001, it was left out"},
                {lines("0\n2\n0\n3"), "0,2,3 Duplicate column"}};
    for (unsigned int i = 0; i < 2 * sizeof(rows) / sizeof(rows[0]); ++i) {
        const bool throughFile = i % 2;
        QSettings settings(throughFile ? m_file.fileName() : emptyFile(), QSettings::IniFormat);
        if (!throughFile)
            settings.setValue("columns", rows[i / 2].stored);
        BoxCloser closer;
        Tree tree;
        tree.restoreSettings(settings);
        const QString columns = columnsText(tree);
        // Platforms that are no real screens say something of their own about the box.
        const QStringList said = closer.texts.isEmpty() ? takeWarnings() : closer.texts.mid(0, 1);
        takeWarnings();
        QCOMPARE((QStringList(columns) + said).join(" "), text(rows[i / 2].columns));
        QCOMPARE(tree.getToggleRawValueColumnAction()->isChecked(), columns == "0,1");
        QCOMPARE(tree.getToggleTypeColumnAction()->isChecked(), tree.hasColumn(Tree::TypeColumn));
    }
}

void tst_MessageTreeSettings::headerComesBack()
{
    const QString fileName = emptyFile();
    {
        QSettings settings(fileName, QSettings::IniFormat);
        settings.beginGroup(text("any/group"));
        Tree tree;
        tree.setColumns(columns("0,1,2,4"));
        tree.setColumnWidth(0, 211);
        tree.header()->moveSection(3, 1);
        tree.setColumnHidden(1, true);
        tree.saveSettings(settings);
    }
    QSettings settings(fileName, QSettings::IniFormat);
    QCOMPARE(settings.allKeys(), lines("any/group/columns\nany/group/headerstate"));
    settings.beginGroup(text("any/group"));
    QCOMPARE(settings.value(text("columns")).toStringList(), lines("0\n1\n2\n4"));
    Tree tree;
    tree.restoreSettings(settings);
    QCOMPARE(rowText(tree.headerItem()), text("Name | Raw value | Value | Custom 1"));
    QCOMPARE(tree.columnWidth(0), 211);
    QCOMPARE(tree.header()->visualIndex(3), 1);
    QVERIFY(tree.isColumnHidden(1));
}

void tst_MessageTreeSettings::missingOrDamagedSettingsAreNoHarm()
{
    QSettings settings(emptyFile(), QSettings::IniFormat);
    Tree tree;
    tree.setColumnWidth(1, 78);
    for (int empty = 0; empty < 2; ++empty) {
        tree.setColumnWidth(0, 77);
        tree.restoreSettings(settings);
        QCOMPARE(columnsText(tree), text("0,3,2"));
        QCOMPARE(tree.columnWidth(0), 150);
        QCOMPARE(tree.columnWidth(1), 78);
        settings.setValue(text("headerstate"), QByteArray());
    }
    settings.setValue(text("columns"), text("1"));
    settings.setValue(text("headerstate"), QByteArray("no state of a header"));
    tree.restoreSettings(settings);
    QCOMPARE(columnsText(tree), text("1"));
}

void tst_MessageTreeSettings::onlyExpandedStatesAreWritten()
{
    QSettings settings(emptyFile(), QSettings::IniFormat);
    expand(text("A+ x list sub deep B list A list"));
    Tree tree;
    tree.saveExpansionState(settings);
    QCOMPARE(settings.value(text("expandedMessages")).toStringList(), lines("f/A"));
    QVERIFY(settings.contains(text("expandedFields")));
    QCOMPARE(settings.value(text("expandedFields")).toStringList(), QStringList());
    expand(text("A x list sub deep B list+ A list+"));
    tree.saveExpansionState(settings);
    QCOMPARE(settings.value(text("expandedMessages")).toStringList(), QStringList());
    QStringList fields = settings.value(text("expandedFields")).toStringList();
    fields.sort();
    QCOMPARE(fields, lines("f/B/list\ng\\/\\*/A/list"));
}

void tst_MessageTreeSettings::expansionSurvivesARestart()
{
    Q_FOREACH (const QString& rows, lines("A x list sub deep B list A list\nA+ x list sub deep B list A+ list+\n"
                                          "A+ x list+ sub+ deep+ B+ list A list")) {
        QSettings settings(emptyFile(), QSettings::IniFormat);
        expand(rows);
        QCOMPARE(expanded(), rows);
        Tree().saveExpansionState(settings);
        expand(QString());
        QCOMPARE(expanded(), text("A x list sub deep B list A list"));
        settings.sync();
        QSettings later(m_file.fileName(), QSettings::IniFormat);
        Tree().loadExpansionState(later);
        QCOMPARE(expanded(), rows);
    }
}

void tst_MessageTreeSettings::pathsThatNameNothingOrSeveralAreDropped()
{
    QSettings settings(emptyFile(), QSettings::IniFormat);
    settings.setValue(text("expandedMessages"), lines("*/A\nf/gone\n[[\n\nf/B"));
    settings.setValue(text("expandedFields"), lines("*/A/list\nf/A/gone\nf/A\\\nf/A/list"));
    Tree tree;
    tree.loadExpansionState(settings);
    QCOMPARE(expanded(), text("A x list+ sub deep B+ list A list"));
    // Loading adds to what is remembered; one text stands for a list.
    settings.clear();
    settings.setValue(text("expandedMessages"), text("f/A"));
    tree.loadExpansionState(settings);
    QCOMPARE(expanded(), text("A+ x list+ sub deep B+ list A list"));
}

QTEST_MAIN(tst_MessageTreeSettings)

#include "tst_messagetreesettings.moc"
