// The icons behind the ":/icon-..." names render, and the About box shows its logo.
#include "TestRegistry.h"
#include "app/AboutDlg.h"
#include "app/AppIcons.h"

#include <QIcon>
#include <QLabel>
#include <QtTest>

// Drawn at `size` with some ink: a missing name, an unreadable file or a lacking svg image plugin
// gives a null or fully transparent pixmap.
static bool Inked(const QPixmap &pixmap, int size)
{
    QImage blank(size, size, QImage::Format_ARGB32);
    blank.fill(Qt::transparent);
    return pixmap.size() == QSize(size, size) && pixmap.toImage().convertToFormat(QImage::Format_ARGB32) != blank;
}

class tst_Icons : public QObject
{
    Q_OBJECT

private slots:
    void everyNameRenders()
    {
        InitIcons();
        InitIcons(); // a second registration must be harmless
        const QString names = "logo new-wizard new open save close validate img-edit folder help about encrypt batch "
                              "add remove up down edit copy refresh generate zoom-in zoom-out home back forward wsp";
        for (const QString &name : names.split(' '))
            QVERIFY2(Inked(QIcon(":/icon-" + name).pixmap(24, 24), 24), qPrintable(name));
    }

    void aboutBoxShowsLogoAndVersion()
    {
        AboutDlg dlg("3.1.4");
        QCOMPARE(dlg.Texts().mid(0, 2), QStringList({"ZEMA Block Tool", "Version 3.1.4"}));
        const QLabel *logo = dlg.findChild<QLabel *>("lb_logo");
        QVERIFY(logo && Inked(logo->pixmap(Qt::ReturnByValue), 64));
    }
};

ZEMA_TEST(tst_Icons)
#include "tst_Icons.moc"
