#include "repeatedfieldtreewidgetitem.h"
#include "singlesubmessagefieldtreewidgetitem.h"
#include "singlevaluefieldtreewidgetitem.h"
#include "stringfieldtreewidgetitem.h"
#include "testbase.h"
#include "treefixtures.h"

class TestFieldTreeWidgetItems : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void rowsWithoutAFieldSaySo();
    void singleValues();
    void strings();
    void subMessages();
    void subMessageTakesNoReferenceUnlessMain();
    void repeatedCountsItsValues();
    void repeatedKeepsItsFirstRowsAndStaysLinear();
    void typesThatContainThemselvesEnd();
};

/** A type with a field of every kind, and a tree that shows the raw values too. */
struct Fixture : Stage
{
    Fixture()
        : Stage(
              "INNER-: value; OTHER-: secret.c value; MAIN: number; U:; T: speed[m/s] maybe.o many.r any.ro sub.o=INNER"
              " subs.r=INNER; V: flags{first secret.c last.r} name.s other.o=OTHER main=MAIN")
    {
        tree.addColumn(Tree::RawValueColumn, true);
    }
};

static void setIndex(SingleValueFieldTreeWidgetItem* row, unsigned int index)
{
    row->setIndex(index);
}

static void setIndex(SingleSubMessageFieldTreeWidgetItem* row, unsigned int index)
{
    row->setIndex(index);
}

static void setIndex(QTreeWidgetItem*, unsigned int) {}

/** Checks what a row and those below it show after "field NAME", "index NUMBER", "clear" or a message. */
template <std::size_t Count, typename Row>
static void play(const TextRow (&rows)[Count], const Types& types, Row* row)
{
    checkRows(rows, [&](const QString& command) {
        const QString object = command.section(QLatin1Char(' '), 1);
        if (command.startsWith("field"))
            row->setFieldInfo(types.field(object));
        else if (command.startsWith("index"))
            setIndex(row, object.toUInt());
        else if (command == "clear")
            row->clearValues();
        else
            row->processMessage(types.message(command).get());
        return (QStringList(rowText(row)) + rowTexts(row, text("  "))).join(text("\n"));
    });
}

void TestFieldTreeWidgetItems::rowsWithoutAFieldSaySo()
{
    Fixture f;
    f.tree.addTopLevelItem(new SingleValueFieldTreeWidgetItem(&f.tree, nullptr, 2));
    f.tree.addTopLevelItem(new StringFieldTreeWidgetItem(&f.tree, nullptr));
    f.tree.addTopLevelItem(new SingleSubMessageFieldTreeWidgetItem(&f.tree, nullptr, 0));
    f.tree.addTopLevelItem(new RepeatedFieldTreeWidgetItem(&f.tree, nullptr));
    const char* const shown = "No field set | N/A\nNo field set | string\nNo field set | N/A\nNo field set";
    const TextRow rows[] = {{"anew", shown}, {"T speed=1", shown}, {"null", shown}};
    checkRows(rows, std::ref(f));
}

void TestFieldTreeWidgetItems::singleValues()
{
    Fixture f;
    SingleValueFieldTreeWidgetItem row(&f.tree, f.field("speed"), 0);
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::CollapseInitially);
    const char* const missing = "maybe | double | No value for optional field | No value for optional field";
    const TextRow rows[] = {
        {"index 0", "speed | double"},
        {"T speed=3.5", "speed | double | 3.5 m/s | 3.5"},
        {"null", "speed | double"},
        {"field maybe", "maybe | double"},
        {"T maybe=1", "maybe | double | 1 | 1"},
        {"T", missing},
        {"clear", missing}, // only a null message and a value take the notice away
        {"null", "maybe | double"},
        {"T", missing},
        {"T maybe=1", "maybe | double | 1 | 1"},
        {"U", "maybe | double | 1 | 1"}, // a type without the field says nothing about it
        {"field", "No field set | N/A"},

        {"field many", "many [0] | double"},
        {"index 3", "many [3] | double"},
        {"T many=10:13", "many [3] | double | 13 | 13"},
        {"T many=20:22", "many [3] | double | 13 | 13"},
        {"index 3", "many [3] | double | 13 | 13"},
        {"index 2", "many [2] | double"},

        {"index 0", "many [0] | double"},
        {"field flags", "flags | double\n  first | double\n  last [0] | double"},
        {"V flags=5 first=1:2 last=7:8",
         "flags | double | 5 | 5\n  first | double | 1 | 1\n  last [0] | double | 7 | 7"},
        {"index 1", "flags | double\n  first | double\n  last [1] | double"},
        // Though there is no second value of the field itself, its components have theirs.
        {"V flags=5 first=1:2 last=7:8", "flags | double\n  first | double | 2 | 2\n  last [1] | double | 8 | 8"},
        {"null", "flags | double\n  first | double\n  last [1] | double"},
    };
    play(rows, f, &row);
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
    // A component that somebody moved goes with the other; what he put in its place stays.
    QTreeWidgetItem elsewhere;
    elsewhere.addChild(row.takeChild(0));
    row.insertChild(0, new QTreeWidgetItem);
    row.setIndex(0);
    QCOMPARE(rowTexts(&row), lines("\nfirst | double\nlast [0] | double"));
    QCOMPARE(elsewhere.childCount(), 0);
}

void TestFieldTreeWidgetItems::strings()
{
    Fixture f;
    StringFieldTreeWidgetItem row(&f.tree, f.field("name"));
    const TextRow rows[] = {
        {"V name='hello'", "name | string | hello | hello"},
        {"U", "name | string | hello | hello"},
        {"null", "name | string"},
        {"V name='hello'", "name | string | hello | hello"},
        {"field speed", "speed | string"}, // reported on the error stream, and taken
    };
    play(rows, f, &row);
    QCOMPARE(row.extractString(nullptr), QString());
}

void TestFieldTreeWidgetItems::subMessages()
{
    Fixture f;
    f.type("OTHER")->setShortDescriptiveText(text("About it"));
    SingleSubMessageFieldTreeWidgetItem row(&f.tree, f.field("other"), 0);
    QCOMPARE(row.toolTip(0), text("About it"));
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
    const char* const none = "other | OTHER\n  Hidden data\n  value | double";
    const char* const nine = "other | OTHER\n  Hidden data\n  value | double | 9 | 9";
    const char* const missing = "other | OTHER | Optional submessage not present | Optional submessage not present\n"
                                "  Hidden data\n  value | double";
    const TextRow rows[] = {
        {"V other=(value=9)", nine},
        {"null", none},
        {"V other=(value=9)", nine},
        {"V", missing},
        {"V other=(value=9)", nine},
        {"V", missing},
        {"null", none},
    };
    play(rows, f, &row);
    QVERIFY(!row.isMessageDisplayed());

    SingleSubMessageFieldTreeWidgetItem second(&f.tree, f.field("subs"), 1);
    const TextRow rowsOfSecond[] = {
        {"T subs=(value=1),(value=2)", "subs [1] | INNER\n  value | double | 2 | 2"},
        {"index 1", "subs [1] | INNER\n  value | double"}, // cleared for every index, also the same
        {"index 2", "subs [2] | INNER\n  value | double"},
        {"T subs=(value=1),(value=2)", "subs [2] | INNER\n  value | double"},
    };
    play(rowsOfSecond, f, &second);
}

void TestFieldTreeWidgetItems::subMessageTakesNoReferenceUnlessMain()
{
    Fixture f;
    const MessageReference message = f.message("V other=(value=1) main=(number=2)");
    const Message* const inner = f.field("other")->getValue(message.get(), 0).getSubMessage();
    const Message* const mainInner = f.field("main")->getValue(message.get(), 0).getSubMessage();
    {
        SingleSubMessageFieldTreeWidgetItem row(&f.tree, f.field("other"), 0);
        SingleSubMessageFieldTreeWidgetItem mainRow(&f.tree, f.field("main"), 0);
        row.processMessage(message.get());
        mainRow.processMessage(message.get());
        QCOMPARE(inner->getReferenceCount(), 1);
        QCOMPARE(mainInner->getReferenceCount(), 2);
    }
    QCOMPARE(mainInner->getReferenceCount(), 1);
}

/** The fields, with their indexes, that a row and all below it say that they stand for. */
static QString fieldsText(QTreeWidgetItem* item)
{
    const AbstractMessageTreeWidgetItem* row = dynamic_cast<const AbstractMessageTreeWidgetItem*>(item);
    QString fields = !row ? text("note") : row->getFieldInfo() ? row->getFieldInfo()->getName() : text("none");
    fields += row ? text(" %1").arg(row->getIndex()) : QString();
    for (int i = 0; i < item->childCount(); ++i)
        fields += text(", ") + fieldsText(item->child(i));
    return fields;
}

void TestFieldTreeWidgetItems::repeatedCountsItsValues()
{
    Fixture f;
    const char* const one = "T speed=1 maybe=1 many=0 any=0:1 subs=(value=4)";
    const char* const oneShown = "T | Message\n  speed | double | 1 m/s | 1\n  maybe | double | 1 | 1\n"
                                 "  many |  | 1 repeated value | 1 repeated value\n    many [0] | double | 0 | 0\n"
                                 "  any |  | 2 repeated values | 2 repeated values\n    any [0] | double | 0 | 0\n"
                                 "    any [1] | double | 1 | 1\n"
                                 "  sub | INNER | Optional submessage not present | Optional submessage not present\n"
                                 "    value | double\n  subs |  | 1 submessage | 1 submessage\n"
                                 "    subs [0] | INNER\n      value | double | 4 | 4";
    const char* const noneShown =
        "T | Message\n  speed | double | 1 m/s | 1\n  maybe | double | 2 | 2\n"
        "  many |  | 0 repeated values | 0 repeated values\n"
        "  any |  | No values for optional field | No values for optional field\n"
        "  sub | INNER\n    value | double | 3 | 3\n  subs |  | 0 submessages | 0 submessages";
    const char* const fresh = "T | Message | No message\n  speed | double\n  maybe | double\n"
                              "  many |  | 0 repeated values | 0 repeated values\n"
                              "  any |  | No values for optional field | No values for optional field\n"
                              "  sub | INNER\n    value | double\n  subs |  | 0 submessages | 0 submessages";
    const QByteArray cleared =
        QByteArray(fresh).replace("INNER", "INNER | Optional submessage not present | Optional submessage not present");
    const TextRow rows[] = {
        {"add T", fresh}, {one, oneShown},   {"T speed=1 maybe=2 sub=(value=3)", noneShown},
        {one, oneShown},  {"null", cleared}, // which leaves the notice
        {one, oneShown},
    };
    checkRows(rows, std::ref(f));
    QVERIFY(f.first()->child(5)->child(0)->isExpanded());
    QCOMPARE(fieldsText(f.first()), text("none -1, speed 0, maybe 0, many -1, many 0, any -1, any 0, any 1, sub 0, "
                                         "value 0, subs -1, subs 0, value 0"));

    RepeatedFieldTreeWidgetItem row(&f.tree, f.field("many"));
    const TextRow alone[] = {
        {"T many=1", "many |  | 1 repeated value | 1 repeated value\n  many [0] | double | 1 | 1"},
        {"U", "many |  | 1 repeated value | 1 repeated value\n  many [0] | double | 1 | 1"},
        {"field many", "many |  | 0 repeated values | 0 repeated values"}, // empties, also when it is the same
    };
    play(alone, f, &row);
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
}

void TestFieldTreeWidgetItems::repeatedKeepsItsFirstRowsAndStaysLinear()
{
    Fixture f;
    QTreeWidgetItem* row = f.add("T")->child(2);
    showTree(&f.tree);
    row->setExpanded(true);
    const QTreeWidgetItem* first = nullptr;
    const int counts[] = {3, 1, 2, 0, 1000, 3, 500, 0, 1000, 999, 0};
    for (unsigned int i = 0; i < sizeof(counts) / sizeof(counts[0]); ++i) {
        const QString values = counts[i] ? text("T many=%1:%2").arg(i).arg(counts[i] + int(i) - 1) : text("T");
        f(values);
        QCoreApplication::processEvents();
        const int count = row->childCount();
        QCOMPARE(count, counts[i]);
        for (int value = 0; value < count; value += qMax(1, count - 1))
            QCOMPARE(rowText(row->child(value)), text("many [%1] | double | %2 | %2").arg(value).arg(value + int(i)));
        QVERIFY(!first || count == 0 || row->child(0) == first);
        first = row->child(0);
    }

    // Rows that somebody added below are not the field's to count or delete.
    f.send("T many=0:2");
    row->addChild(new QTreeWidgetItem(lines("note")));
    f.send("T many=0");
    QCOMPARE(rowTexts(row), lines("many [0] | double | 0 | 0\nnote"));
}

void TestFieldTreeWidgetItems::typesThatContainThemselvesEnd()
{
    Stage stage("NODE-: value next=NODE");
    const TextRow rows[] = {
        {"add NODE", "NODE | Message | No message\n  value | double\n  next | NODE"},
        {"NODE value=1 next=(value=2 next=(value=3))",
         "NODE | Message\n  value | double | 1\n  next | NODE\n    value | double | 2\n    next | NODE\n"
         "      value | double | 3\n      next | NODE"},
    };
    checkRows(rows, std::ref(stage));
}

QTEST_MAIN(TestFieldTreeWidgetItems)
#include "tst_fieldtreewidgetitems.moc"
