// The file container: encoding, error routing and what reaches the disk.
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/AbstractFileHandling.h"
#include "app/EncodeBuffer.h"
#include "app/ErrorList.h"
#include "app/FileReport.h"

#include <QtTest>

static QByteArray Noise(int size)
{
    QByteArray data;
    for (int i = 0; i < size; ++i)
        data.append(char((i * 7919) % 253));
    return data;
}

class tst_Container : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;

private slots:
    void encodeRoundTrip_data()
    {
        QTest::addColumn<qint32>("key");
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("key 0") << 0 << Noise(5000);
        QTest::newRow("table 3") << 3 << Noise(5000);
        QTest::newRow("own byte of a negative key") << -5 << Noise(100);
        QTest::newRow("empty stays empty") << 0 << QByteArray();
    }
    void encodeRoundTrip()
    {
        QFETCH(qint32, key);
        QFETCH(QByteArray, data);
        QByteArray buffer = data;
        EncodeBuffer(buffer, true, key);
        QCOMPARE(buffer.isEmpty(), data.isEmpty());
        EncodeBuffer(buffer, false, key);
        QCOMPARE(buffer, data);
    }

    // Key 0 adds 7 to every compressed byte; a keyed table repeats every 16 bytes.
    void scrambleBytes()
    {
        const QByteArray data = Noise(4000), compressed = qCompress(data, -1);
        QByteArray seven = data, keyed = data;
        EncodeBuffer(seven, true, 0);
        EncodeBuffer(keyed, true, 2);
        QSet<quint8> deltas;
        for (int i = 0; i + 16 < compressed.size(); ++i) {
            QCOMPARE(quint8(seven[i]), quint8(quint8(compressed[i]) + 7));
            const quint8 delta = quint8(keyed[i]) - quint8(compressed[i]);
            QCOMPARE(quint8(quint8(keyed[i + 16]) - quint8(compressed[i + 16])), delta);
            deltas.insert(delta);
        }
        QVERIFY(deltas.size() > 1);
    }

    void damagedInputDecodesToNothing()
    {
        // A length in front claiming 2 GB must not make anyone reserve it.
        for (QByteArray bytes : {QByteArray("<?xml version=\"1.0\"?><a/>"), QByteArray("\x7f\xff\xff\xff\x78\x9c\x01\x02\x03", 9)}) {
            EncodeBuffer(bytes, false, 0);
            QVERIFY(bytes.isEmpty());
        }
    }

    // The whole path on reading, the bare name on writing, shown only when not silent; a written
    // file is replaced only at close.
    void openingReportsAndReplaces()
    {
        QStringList shown;
        SetFileReportHook([&](const QString &title, const QString &text) { shown << title + "|" + text; });
        ErrorList errors;
        AbstractFileHandling io(QString(), &errors, 0, 0, 0, 0), quiet(QString(), nullptr, 1, 0, 0, 0);
        const QString missing = dir.filePath("missing.cfg");
        const bool opened = io.OpenForRead(missing, "ZEMA") || io.OpenForWrite(dir.filePath("no/such/dir/out.cfg"), "ZEMA")
                            || quiet.OpenForRead(missing, "ZEMA");
        SetFileReportHook(nullptr);
        QVERIFY(!opened);
        QVERIFY(errors.errors.value(0).startsWith("Error: Cannot open file: " + missing + " "));
        QVERIFY(errors.errors.value(1).startsWith("Error: Cannot write file: out.cfg "));
        QVERIFY(shown.size() == 2 && shown[0].startsWith("ZEMA|Cannot open file: "));

        const QString path = dir.filePath("keep.cfg");
        QVERIFY(WriteBytes(path, "old content") && quiet.OpenForWrite(path, "ZEMA"));
        QCOMPARE(ReadBytes(path), QByteArray("old content"));
        quiet.CloseWrite();
        QVERIFY(ReadBytes(path).startsWith("<?xml"));
    }
};

ZEMA_TEST(tst_Container)
#include "tst_Container.moc"
