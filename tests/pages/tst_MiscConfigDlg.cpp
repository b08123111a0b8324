// Placeholder until its suite is written.
#include "TestRegistry.h"

#include <QtTest>

class tst_MiscConfigDlg : public QObject
{
    Q_OBJECT
private slots:
    void placeholder() {}
};

ZEMA_TEST(tst_MiscConfigDlg)
#include "tst_MiscConfigDlg.moc"
