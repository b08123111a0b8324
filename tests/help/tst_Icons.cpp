// The icons behind the ":/icon-..." names render, and the About box shows its logo.
#include "TestRegistry.h"
#include "app/AboutDlg.h"
#include "app/AppIcons.h"

#include <QIcon>
#include <QLabel>
#include <QtTest>

class tst_Icons : public QObject
{
    Q_OBJECT

    // Pixels that are not fully transparent: an unreadable or empty drawing has none.
    static int InkedPixels(const QPixmap &pixmap)
    {
        const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
        int inked = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                inked += qAlpha(image.pixel(x, y)) > 0;
        return inked;
    }

private slots:
    void everyNameRenders_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"icon-logo", "icon-new-wizard", "icon-new", "icon-open", "icon-save", "icon-close",
                                 "icon-validate", "icon-img-edit", "icon-folder", "icon-help", "icon-about",
                                 "icon-encrypt", "icon-batch", "icon-add", "icon-remove", "icon-up", "icon-down",
                                 "icon-edit", "icon-copy", "icon-refresh", "icon-generate", "icon-zoom-in",
                                 "icon-zoom-out", "icon-home", "icon-back", "icon-forward", "icon-wsp"})
            QTest::newRow(name) << QString(name);
    }
    void everyNameRenders()
    {
        QFETCH(QString, name);
        InitIcons();
        InitIcons(); // a second registration must be harmless
        const QIcon icon(":/" + name);
        QVERIFY(!icon.isNull());
        const QPixmap pixmap = icon.pixmap(24, 24);
        QCOMPARE(pixmap.size(), QSize(24, 24));
        QVERIFY2(InkedPixels(pixmap) > 24, "the drawing is empty: is the svg image plugin installed?");
    }

    // The logo at 64 px and the version line.
    void aboutBoxShowsLogoAndVersion()
    {
        AboutDlg dlg("3.1.4");
        QCOMPARE(dlg.Texts().mid(0, 2), QStringList({"ZEMA Block Tool", "Version 3.1.4"}));
        const QLabel *logo = dlg.findChild<QLabel *>("lb_logo");
        QVERIFY(logo);
        const QPixmap pixmap = logo->pixmap(Qt::ReturnByValue);
        QCOMPARE(pixmap.size(), QSize(64, 64));
        QVERIFY(InkedPixels(pixmap) > 64);
    }
};

ZEMA_TEST(tst_Icons)
#include "tst_Icons.moc"
