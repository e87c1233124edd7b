#include "corvel.h"
#include "fieldwalk.h"
#include "flagfieldinfo.h"
#include "formatregistry.h"
#include "knownformats.h"
#include "messageneedmanager.h"
#include "pathfieldinfo.h"
#include "testbase.h"

static const int Several = TestFieldInfo::Repeated;
static const int Maybe = TestFieldInfo::Optional;
static const int Secret = TestFieldInfo::Confidential;

/** A message with fields of all kinds, some of which it lacks. */
class Drive
{
public:
    Drive()
        : format(text("f"))
        , wheel(addTestType(&format, "Wheel", "speed", false))
        , info(addTestType(&format, "Drive", "speed"))
        , message(new TestMessage(info))
    {
        const_cast<FieldInfo*>(wheel->getFieldInfo(text("speed")))->setUnit(text("m/s"));
        TestFieldInfo* grip = new TestFieldInfo(text("grip"), Maybe);
        wheel->addField(grip);
        TestFieldInfo* cells = new TestFieldInfo(text("cells"), Several);
        info->addField(cells);
        info->addField(new TestFieldInfo(text("gone"), Maybe));
        info->addField(new TestFieldInfo(text("none"), Several));
        info->addField(new TestFieldInfo(text("few"), Several | Maybe));
        TestFieldInfo* pin = new TestFieldInfo(text("pin"), Secret);
        info->addField(pin);
        info->addField(new TestFieldInfo(text("lost"), Secret | Maybe));
        TestFieldInfo* tag = new TestFieldInfo(text("tag"), TestFieldInfo::String);
        info->addField(tag);
        message->setText(tag, "R2");
        addFlags("modes", Several, QVector<FieldValue>() << FieldValue::fromUnsigned(1) << FieldValue::fromUnsigned(2));
        addFlags("key", Secret, QVector<FieldValue>(1, FieldValue::fromUnsigned(2)));
        TestMessage* first = wheels("wheels", Several, 2);
        first->set(grip, 0.5);
        wheels("spare", Maybe, 0);
        wheels("vault", Secret, 1);
        wheels("safes", Secret | Several, 2);
        message->set(info->getFieldInfo(text("speed")), 3.5)->fill(cells, 3, 7)->set(pin, 1234);
        FormatRegistry::getInstance()->addFormat(&format);
    }
    ~Drive() { message->removeReference(); }

    FormatInfo format;
    MessageInfo* wheel;
    MessageInfo* info;
    TestMessage* message;

private:
    void addFlags(const char* name, int flags, const QVector<FieldValue>& values)
    {
        TestFieldInfo* field = new TestFieldInfo(text(name), flags);
        QVector<FieldInfo::Enumerator> bits;
        bits << FieldInfo::Enumerator(1, text("ARMED")) << FieldInfo::Enumerator(2, text("AUTO"));
        field->setEnumerators(bits, true);
        FlagFieldInfo::addFlagsTo(field);
        info->addField(field);
        message->set(field, values);
    }

    /** A field of wheels, of which there are @p count with the speeds 10, 11 and so on; the first. */
    TestMessage* wheels(const char* name, int flags, int count)
    {
        TestFieldInfo* field = new TestFieldInfo(text(name), flags, FieldType(wheel));
        info->addField(field);
        QList<Message*> parts;
        for (int i = 0; i < count; ++i)
            parts << (new TestMessage(wheel))->set(wheel->getFieldInfo(text("speed")), 10 + i);
        message->set(field, parts);
        return parts.isEmpty() ? nullptr : static_cast<TestMessage*>(parts.first());
    }
};

static QString textOf(const FieldWalk& walk)
{
    static const char* const ends[] = {"no such field", "absent", "out of range", "hidden", "message", "", "", ""};
    QStringList texts;
    for (unsigned int i = 0; i < walk.getCount(); ++i)
        texts << (walk.getEnd() == FieldWalk::Branches ? textOf(walk.getBranch(i))
                                                       : walk.getField()->getRawString(walk.getValue(i)));
    if (walk.getEnd() == FieldWalk::OneValue)
        return texts.first();
    return walk.getEnd() < FieldWalk::OneValue ? text(ends[walk.getEnd()])
                                               : text("[%1]").arg(texts.join(QLatin1String(", ")));
}

class tst_FieldPath : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void walksEndAtValuesOrSayWhyNot()
    {
        const Drive drive;
        const TextRow rows[] = {{"speed", "3.5"},
                                {"cells", "[7, 8, 9]"},
                                {"cells[*]", "[7, 8, 9]"},
                                {"cells[2]", "9"},
                                {"cells[3]", "out of range"},
                                {"gone", "absent"},
                                {"none", "[]"},
                                {"none[0]", "out of range"},
                                {"few", "absent"},
                                {"few[0]", "absent"},
                                {"modes/ARMED", "[true, false]"},
                                {"modes/ARMED[1]", "false"},
                                {"modes[1]/AUTO", "true"},
                                {"modes[2]/AUTO", "out of range"},
                                {"wheels", "[Wheel, Wheel]"},
                                {"wheels[1]/speed", "11"},
                                {"wheels[2]/speed", "out of range"},
                                {"wheels/speed", "[10, 11]"},
                                {"wheels/grip", "[0.5, absent]"},
                                {"spare", "absent"},
                                {"spare/speed", "absent"},
                                {"pin", "hidden"},
                                {"lost", "absent"},
                                {"key/AUTO", "hidden"},
                                {"vault/speed", "hidden"},
                                {"safes", "hidden"},
                                {"safes/speed", "hidden"},
                                {"safes[0]/speed", "hidden"},
                                {"safes[2]/speed", "out of range"}};
        checkRows(rows, [&drive](const QString& way) {
            PathExpression expression;
            expression.setConsiderSubMessages(true);
            expression.setString(text("f/Drive/") + way);
            const FieldPath path = expression.getMatches().value(0);
            return textOf(FieldWalk(path, drive.message));
        });
    }

    void whatIsConfidentialIsForComputingAndWhenItMayBeShown()
    {
        const Drive drive;
        const char* const ways[] = {"pin", "key/AUTO", "vault/speed", "safes/speed"};
        const char* const values[] = {"1234", "true", "10", "[10, 11]"};
        for (int i = 0; i < 4; ++i) {
            PathExpression expression;
            expression.setConsiderSubMessages(true);
            expression.setString(text("f/Drive/") + text(ways[i]));
            const FieldPath path = expression.getMatches().value(0);
            QVERIFY(path.isHidden());
            QCOMPARE(textOf(FieldWalk(path, drive.message, FieldWalk::Everything)), text(values[i]));
            Corvel::setConfidentialInformationDisplayEnabled(true);
            const QString shown = textOf(FieldWalk(path, drive.message));
            const bool isHidden = path.isHidden();
            Corvel::setConfidentialInformationDisplayEnabled(false);
            QCOMPARE(shown, text(values[i]));
            QVERIFY(!isHidden);
        }
        QVERIFY(!Corvel::isHidden(drive.info->getFieldInfo(text("speed"))) && !Corvel::isHidden(nullptr));
    }

    void pathsAreMadeOfNames()
    {
        const Drive drive;
        FieldPath path(drive.info);
        QCOMPARE(textOf(FieldWalk(path, drive.message)), text("message"));
        QVERIFY(path.append(text("wheels"), 1) && !path.append(text("cells")) && path.append(text("speed"), 5));
        QCOMPARE(path.getName(), text("Drive.wheels[1].speed"));
        QCOMPARE(path.getValue(drive.message), FieldValue::fromDouble(11));
        FieldPath flag(drive.info);
        QVERIFY(flag.append(text("modes"), 1) && !flag.append(text("HOVER")) && flag.append(text("AUTO")));
        QCOMPARE(flag.getExpression(), text("f/Drive/modes[1]/AUTO"));
        QCOMPARE(flag.getIndex(), 1);
        QVERIFY(FieldPath::fromExpression(flag.getExpression()) == flag && !(flag == path));

        // What is no way, no message, or a message of another type.
        TestMessage* other = new TestMessage(drive.wheel);
        const FieldPath none;
        QVERIFY(none.isNull() && none.getExpression().isEmpty() && none.getName().isEmpty() && none.getIndex() < 0);
        QCOMPARE(FieldWalk(none, drive.message).getEnd(), FieldWalk::NoSuchField);
        QCOMPARE(FieldWalk(path, nullptr).getEnd(), FieldWalk::NoSuchField);
        QCOMPARE(FieldWalk(path, other).getEnd(), FieldWalk::NoSuchField);
        QVERIFY(!FieldWalk(path, other).getValue().isValid());
        other->removeReference();
    }

    void valuesAreThoseOfAllBranchesWithTheirPaths()
    {
        const Drive drive;
        const TextRow rows[] = {{"Drive/speed", "speed: 3.5"},
                                {"*/speed", "speed: 3.5"},
                                {"Drive/cells", "cells[0]: 7, cells[1]: 8, cells[2]: 9"},
                                {"Drive/cells[3]", "cells[3] is out of range"},
                                {"Drive/none", "none has none"},
                                {"Drive/wheels/grip", "wheels[0].grip: 0.5, wheels[1].grip is absent"},
                                {"Drive/modes/AUTO", "modes.AUTO[0]: false, modes.AUTO[1]: true"},
                                {"Drive/tag", "tag: R2"},
                                {"Drive/tag[1]", "tag[1]: 2"},
                                {"Drive/safes/speed", "safes.speed is hidden"},
                                {"Drive/spare/*", "spare.speed is absent, spare.grip is absent"},
                                {"Wheel/speed", ""}};
        checkRows(rows, [&drive](const QString& way) {
            static const char* const ends[] = {"", "is absent", "is out of range", "is hidden",
                                               "", ":",         "has none",        ""};
            PathExpression expression;
            expression.setConsiderSubMessages(true);
            expression.setString(text("f/") + way);
            QStringList texts;
            Q_FOREACH (const PathValue& found, expression.getValues(drive.message))
                texts << found.path.getFieldName() + text(found.isValid() ? "" : " ") + text(ends[found.end]) +
                             text(found.isValid() ? " " : "") + found.getText();
            return texts.join(text(", "));
        });
        QVERIFY(PathExpression().getValues(nullptr).isEmpty() &&
                FieldPath(drive.info).getValues(drive.message).isEmpty());
    }

    void aFieldStandsForAPath()
    {
        QObject* const owner = new QObject;
        const PathFieldInfo* const late = new PathFieldInfo(text("f/Drive/wheels[1]/speed"), owner);
        const MessageNeedManager* const needs = MessageNeedManager::getInstance();
        {
            Drive drive;
            QVERIFY(late->occursIn(drive.info) && needs->isNeeded(drive.info) && !late->occursIn(drive.wheel));
            QCOMPARE(late->getUnit(), text("m/s"));
            const TextRow rows[] = {{"speed", "3.5"},
                                    {"cells", "7; 8; 9"},
                                    {"wheels/speed", "10 m/s; 11 m/s"},
                                    {"wheels[1]/speed", "11 m/s"},
                                    {"wheels[2]/speed", ""},
                                    {"modes[1]/AUTO", "true"},
                                    {"tag", "R2: R; 2"},
                                    {"vault/speed", ""},
                                    {"*", "nothing"},
                                    {"s#peed", "nothing"}};
            checkRows(rows, [&drive](const QString& way) {
                const PathFieldInfo field(text("f/Drive/") + way);
                QStringList texts;
                Q_FOREACH (const FieldValue& value, field.getValues(drive.message))
                    texts << field.getInterpretedString(value, true);
                const QString shown = texts.join(text("; "));
                if (!field.occursIn(drive.info))
                    return text("nothing") + shown;
                return field.isStringField() ? field.getStringValue(drive.message) + text(": ") + shown : shown;
            });
            FormatRegistry::getInstance()->removeFormat(&drive.format);
            QVERIFY(!late->occursIn(drive.info) && !needs->isNeeded(drive.info));
            QCOMPARE(late->getValueCount(drive.message), 0u);
        }
        const Drive again;
        QCOMPARE(late->getInterpretedString(late->getValue(again.message, 0), true), text("11 m/s"));
        delete owner;
        QVERIFY(!needs->isNeeded(again.info));
    }

    void oneValueIsMeantByAnExpression()
    {
        const Drive drive;
        const TextRow rows[] = {{"f/Drive/wheels/speed", "f/Drive/wheels[0]/speed"},
                                {"f/Drive/cells[*]", "f/Drive/cells"},
                                {"f/Drive/modes/AUTO", "f/Drive/modes/AUTO"},
                                {"f/Drive/*", ""}};
        checkRows(rows, [](const QString& given) { return FieldPath::fromExpression(given).getExpression(); });
    }
};

QTEST_MAIN(tst_FieldPath)
#include "tst_fieldpath.moc"
