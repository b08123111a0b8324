// Placeholder until its suite is written.
#include "TestRegistry.h"

#include <QtTest>

class tst_PresentationDlg : public QObject
{
    Q_OBJECT
private slots:
    void placeholder() {}
};

ZEMA_TEST(tst_PresentationDlg)
#include "tst_PresentationDlg.moc"
