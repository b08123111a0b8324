// Placeholder until its suite is written.
#include "TestRegistry.h"

#include <QtTest>

class tst_ModParameterDlg : public QObject
{
    Q_OBJECT
private slots:
    void placeholder() {}
};

ZEMA_TEST(tst_ModParameterDlg)
#include "tst_ModParameterDlg.moc"
