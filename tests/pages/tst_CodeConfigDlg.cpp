// Placeholder until its suite is written.
#include "TestRegistry.h"

#include <QtTest>

class tst_CodeConfigDlg : public QObject
{
    Q_OBJECT
private slots:
    void placeholder() {}
};

ZEMA_TEST(tst_CodeConfigDlg)
#include "tst_CodeConfigDlg.moc"
