// Placeholder until its suite is written.
#include "TestRegistry.h"

#include <QtTest>

class tst_ParaPageChecks : public QObject
{
    Q_OBJECT
private slots:
    void placeholder() {}
};

ZEMA_TEST(tst_ParaPageChecks)
#include "tst_ParaPageChecks.moc"
