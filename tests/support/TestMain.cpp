// Runs every registered test class of the executable; a class name as first argument runs only
// that one, the rest of the arguments go to QtTest.
#include "TestRegistry.h"

#include <QApplication>
#include <QTest>
#include <memory>

std::map<std::string, TestRegistry::Factory> &TestRegistry::All()
{
    static std::map<std::string, Factory> all;
    return all;
}

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QStringList args = app.arguments();
    QString only;
    if (args.size() > 1 && TestRegistry::All().count(args[1].toStdString())) {
        only = args[1];
        args.removeAt(1);
    }
    int failed = 0;
    for (auto &[name, factory] : TestRegistry::All()) {
        if (!only.isEmpty() && only != QString::fromStdString(name))
            continue;
        std::unique_ptr<QObject> test(factory());
        failed += QTest::qExec(test.get(), args) != 0;
    }
    return failed ? 1 : 0;
}
