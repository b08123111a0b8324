// Placeholder until its suite is written.
#include "TestRegistry.h"

#include <QtTest>

class tst_ModelParameterDlg : public QObject
{
    Q_OBJECT
private slots:
    void placeholder() {}
};

ZEMA_TEST(tst_ModelParameterDlg)
#include "tst_ModelParameterDlg.moc"
