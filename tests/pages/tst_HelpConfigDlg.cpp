// Placeholder until its suite is written.
#include "TestRegistry.h"

#include <QtTest>

class tst_HelpConfigDlg : public QObject
{
    Q_OBJECT
private slots:
    void placeholder() {}
};

ZEMA_TEST(tst_HelpConfigDlg)
#include "tst_HelpConfigDlg.moc"
