// Placeholder until its suite is written.
#include "TestRegistry.h"

#include <QtTest>

class tst_InputOutputDlg : public QObject
{
    Q_OBJECT
private slots:
    void placeholder() {}
};

ZEMA_TEST(tst_InputOutputDlg)
#include "tst_InputOutputDlg.moc"
