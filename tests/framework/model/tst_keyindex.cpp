#include "keyindex.h"
#include "testbase.h"
#include "textrows.h"

static quint64 keyNumber(const QString& course, quint32 i)
{
    if (course == text("types"))
        return KeyIndex::keyOf(i, 257);
    if (course == text("senders"))
        return KeyIndex::keyOf(1, i);
    if (course == text("both"))
        return KeyIndex::keyOf(i, i);
    return i * Q_UINT64_C(0x5851f42d4c957f2d); // anything
}

class tst_KeyIndex : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void findsWhatWasInserted()
    {
        const TextRow rows[] = {{"types", ""}, {"senders", ""}, {"both", ""}, {"anything", ""}};
        QCOMPARE(differences(rows,
                             [](const QString& course) {
                                 KeyIndex index;
                                 for (quint32 i = 0; i < 1000; ++i) {
                                     const quint64 key = keyNumber(course, i);
                                     if (index.find(key) != -1)
                                         return text("found before it was inserted");
                                     index.insert(key, int(i));
                                     if (index.find(keyNumber(course, i / 2)) != int(i / 2))
                                         return QString::fromLatin1("%1 was lost with %2").arg(i / 2).arg(i);
                                 }
                                 for (quint32 i = 0; i < 1000; ++i) {
                                     if (index.find(keyNumber(course, i)) != int(i))
                                         return QString::fromLatin1("%1 was lost in the end").arg(i);
                                 }
                                 return QString();
                             }),
                 QString());
    }

    void copiesAndClearedOnesAreIndependent()
    {
        KeyIndex index;
        QCOMPARE(index.find(0), -1);
        index.insert(0, 5);
        KeyIndex copy = index;
        copy.insert(16, 6);
        index.clear();
        QCOMPARE(index.find(0), -1);
        index.insert(0, 7);
        QVERIFY(copy.find(0) == 5 && copy.find(16) == 6 && index.find(0) == 7 && index.find(16) == -1);
    }
};

QTEST_APPLESS_MAIN(tst_KeyIndex)
#include "tst_keyindex.moc"
