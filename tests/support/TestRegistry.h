// Lets each test file register its QtTest class, so one executable per area runs them all.
#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <string>

namespace TestRegistry {
using Factory = std::function<QObject *()>;
std::map<std::string, Factory> &All();
struct Registrar {
    Registrar(const char *name, Factory factory) { All()[name] = std::move(factory); }
};
} // namespace TestRegistry

#define ZEMA_TEST(Class) \
    static TestRegistry::Registrar registrar_##Class(#Class, [] { return new Class; });
