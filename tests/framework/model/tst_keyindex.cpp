#include "keyindex.h"
#include "testbase.h"

class tst_KeyIndex : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void findsWhatWasInserted()
    {
        for (int course = 0; course < 4; ++course) {
            KeyIndex index;
            QVector<quint64> keys;
            for (quint32 i = 0; i < 1000; ++i) {
                keys << (course == 0   ? KeyIndex::keyOf(i, 257)
                         : course == 1 ? KeyIndex::keyOf(1, i)
                         : course == 2 ? KeyIndex::keyOf(i, i)
                                       : i * Q_UINT64_C(0x5851f42d4c957f2d));
                QCOMPARE(index.find(keys.last()), -1);
                index.insert(keys.last(), int(i));
                QCOMPARE(index.find(keys.at(int(i / 2))), int(i / 2));
            }
            for (int i = 0; i < 1000; ++i)
                QCOMPARE(index.find(keys.at(i)), i);
        }
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
