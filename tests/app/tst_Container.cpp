// The file container: encoding, error routing and what reaches the disk.
#include "TestFiles.h"
#include "TestRegistry.h"
#include "app/AbstractFileHandling.h"
#include "app/EncodeBuffer.h"
#include "app/ErrorList.h"
#include "app/FileReport.h"

#include <QtTest>

class tst_Container : public QObject
{
    Q_OBJECT
    QStringList shown;

private slots:
    void init()
    {
        shown.clear();
        SetFileReportHook([this](const QString &title, const QString &text) { shown << title + "|" + text; });
    }
    void cleanup() { SetFileReportHook(nullptr); }

    void encodeRoundTrip_data()
    {
        QTest::addColumn<qint32>("key");
        QTest::newRow("key 0") << 0;
        QTest::newRow("table 1") << 1;
        QTest::newRow("table 2") << 2;
        QTest::newRow("table 3") << 3;
        QTest::newRow("own byte") << 0x1234;
        QTest::newRow("negative") << -5;
    }
    void encodeRoundTrip()
    {
        QFETCH(qint32, key);
        QByteArray data;
        for (int i = 0; i < 5000; ++i)
            data.append(char(i * 31 % 251));
        QByteArray buffer = data;
        EncodeBuffer(buffer, true, key);
        QVERIFY(buffer != data);
        EncodeBuffer(buffer, false, key);
        QCOMPARE(buffer, data);
    }

    void keyZeroAddsSevenToCompressedBytes()
    {
        const QByteArray data("<blk_def_data>some text</blk_def_data>");
        const QByteArray compressed = qCompress(data, -1);
        QByteArray buffer = data;
        EncodeBuffer(buffer, true, 0);
        QCOMPARE(buffer.size(), compressed.size());
        for (int i = 0; i < buffer.size(); ++i)
            QCOMPARE(quint8(buffer[i]), quint8(quint8(compressed[i]) + 7));
    }

    void keyedTablesCycleEverySixteenBytes()
    {
        QByteArray data;
        for (int i = 0; i < 4000; ++i)
            data.append(char((i * 7919) % 253));
        const QByteArray compressed = qCompress(data, -1);
        QByteArray buffer = data;
        EncodeBuffer(buffer, true, 2);
        QVERIFY(compressed.size() > 32);
        QSet<quint8> deltas;
        for (int i = 0; i + 16 < buffer.size(); ++i) {
            const quint8 delta = quint8(buffer[i]) - quint8(compressed[i]);
            QCOMPARE(quint8(quint8(buffer[i + 16]) - quint8(compressed[i + 16])), delta);
            deltas.insert(delta);
        }
        QVERIFY(deltas.size() > 1);
        QCOMPARE(ScrambleByte(300, 5), quint8(300 & 0xff));
    }

    void emptyStaysEmpty()
    {
        QByteArray buffer;
        EncodeBuffer(buffer, true, 0);
        QVERIFY(buffer.isEmpty());
        EncodeBuffer(buffer, false, 0);
        QVERIFY(buffer.isEmpty());
    }

    void damagedInputDecodesToNothing_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("short") << QByteArray("\x01\x02", 2);
        QTest::newRow("plain text") << QByteArray("<?xml version=\"1.0\"?><a/>");
        // A length in front claiming 2 GB must not make anyone reserve it.
        QTest::newRow("huge length") << QByteArray("\x7f\xff\xff\xff\x78\x9c\x01\x02\x03", 9);
    }
    void damagedInputDecodesToNothing()
    {
        QFETCH(QByteArray, bytes);
        EncodeBuffer(bytes, false, 0);
        QVERIFY(bytes.isEmpty());
    }

    void openFailuresAreReportedWithTheirTexts()
    {
        QTemporaryDir dir;
        ErrorList errors;
        AbstractFileHandling io(QString(), &errors, 0, 0, 0, 0);
        const QString missing = dir.filePath("missing.cfg");
        QVERIFY(!io.OpenForRead(missing, "ZEMA"));
        QCOMPARE(errors.errors.size(), 1);
        QVERIFY(errors.errors[0].startsWith("Error: Cannot open file: " + missing + " "));
        QCOMPARE(shown.size(), 1);
        QVERIFY(shown[0].startsWith("ZEMA|Cannot open file: "));

        QVERIFY(!io.OpenForWrite(dir.filePath("no/such/dir/out.cfg"), "ZEMA"));
        QVERIFY(errors.errors[1].startsWith("Error: Cannot write file: out.cfg "));
    }

    void silentWithoutListShowsNothing()
    {
        AbstractFileHandling io(QString(), nullptr, 1, 0, 0, 0);
        QVERIFY(!io.OpenForRead("/nonexistent/file.cfg", "ZEMA"));
        QVERIFY(shown.isEmpty());
    }

    void xmlErrorSurfacesAtCloseRead()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("broken.cfg");
        QVERIFY(WriteBytes(path, "<a><b></a>"));
        ErrorList errors;
        AbstractFileHandling io(QString(), &errors, 1, 0, 0, 0);
        QXmlStreamReader *reader = io.OpenForRead(path, "ZEMA");
        QVERIFY(reader);
        while (!reader->atEnd())
            reader->readNext();
        QVERIFY(errors.IsEmpty());
        QVERIFY(!io.CloseRead(path, "ZEMA"));
        QCOMPARE(errors.errors.size(), 1);
        QVERIFY(errors.errors[0].startsWith("Error: broken.cfg: File Loading Error: "));
        QVERIFY(io.CloseRead(path, "ZEMA")); // nothing left to close
    }

    void encodedWriteAndOneChangedByte()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("x.bdef");
        {
            AbstractFileHandling io(QString(), nullptr, 1, 1, 1, 0);
            QXmlStreamWriter *writer = io.OpenForWrite(path, "ZEMA");
            QVERIFY(writer);
            writer->writeTextElement("root", "a & <b>");
            io.CloseWrite();
        }
        QByteArray disk = ReadBytes(path);
        QByteArray plain = disk;
        EncodeBuffer(plain, false, 0);
        QVERIFY(plain.contains("<root>a &amp; &lt;b&gt;</root>"));

        disk[disk.size() / 2] = char(disk[disk.size() / 2] ^ 0x55);
        QVERIFY(WriteBytes(path, disk));
        ErrorList errors;
        AbstractFileHandling io(QString(), &errors, 1, 1, 1, 0);
        QXmlStreamReader *reader = io.OpenForRead(path, "ZEMA");
        QVERIFY(reader); // not earlier than CloseRead
        while (!reader->atEnd())
            reader->readNext();
        QVERIFY(!io.CloseRead(path, "ZEMA"));
        QVERIFY(errors.errors.value(0).contains("x.bdef: File Loading Error: "));
        QCOMPARE(ReadBytes(path), disk);
    }

    void writeReplacesOnlyAtClose()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("keep.cfg");
        QVERIFY(WriteBytes(path, "old content"));
        {
            AbstractFileHandling io(QString(), nullptr, 1, 0, 0, 0);
            QVERIFY(io.OpenForWrite(path, "ZEMA"));
            QCOMPARE(ReadBytes(path), QByteArray("old content"));
            io.CloseWrite();
        }
        QVERIFY(ReadBytes(path).startsWith("<?xml"));
    }
};

ZEMA_TEST(tst_Container)
#include "tst_Container.moc"
