// Evaluation of script fields. Each thread keeps one script engine, since making one costs far
// more than an evaluation; an engine whose global object a script changed is thrown away, so one
// evaluation never sees the variables of another. A watchdog interrupts scripts that never end.
#include "app/ScriptEval.h"

#include "params/BlkParaData.h"
#include "params/TextChecks.h"

#include <QJSEngine>
#include <QJSValueIterator>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace {

constexpr std::chrono::milliseconds kScriptTimeout(2000);
constexpr int kMaxNesting = 4;  // an entity's val_size may name the entity itself

class Watchdog
{
public:
    static Watchdog &Instance()
    {
        static Watchdog watchdog;
        return watchdog;
    }

    ~Watchdog()
    {
        {
            std::lock_guard<std::mutex> lock(mutex);
            stop = true;
        }
        wake.notify_all();
        if (thread.joinable())
            thread.join();
    }

    void Arm(QJSEngine *engine)
    {
        {
            std::lock_guard<std::mutex> lock(mutex);
            if (!thread.joinable())
                thread = std::thread([this] { Run(); });
            armed[engine] = std::chrono::steady_clock::now() + kScriptTimeout;
        }
        wake.notify_all();
    }

    // After this returns the watchdog no longer touches the engine.
    void Disarm(QJSEngine *engine)
    {
        std::lock_guard<std::mutex> lock(mutex);
        armed.erase(engine);
    }

private:
    void Run()
    {
        std::unique_lock<std::mutex> lock(mutex);
        while (!stop) {
            if (armed.empty()) {
                wake.wait(lock);
                continue;
            }
            auto first = armed.begin()->second;
            for (const auto &entry : armed)
                first = std::min(first, entry.second);
            wake.wait_until(lock, first);
            const auto now = std::chrono::steady_clock::now();
            for (auto it = armed.begin(); it != armed.end();) {
                if (it->second <= now) {
                    it->first->setInterrupted(true);
                    it = armed.erase(it);
                } else {
                    ++it;
                }
            }
        }
    }

    std::mutex mutex;
    std::condition_variable wake;
    std::map<QJSEngine *, std::chrono::steady_clock::time_point> armed;
    bool stop = false;
    std::thread thread;
};

bool HasOwnGlobals(QJSEngine *engine)
{
    QJSValueIterator it(engine->globalObject());
    return it.hasNext();
}

struct ScriptResult {
    QString text;
    bool error = false;
};

// The result is copied out, as a value of the engine dies with the engine.
ScriptResult RunScript(const QString &program)
{
    thread_local std::unique_ptr<QJSEngine> engine;
    if (!engine)
        engine = std::make_unique<QJSEngine>();
    ScriptResult result;
    {
        Watchdog::Instance().Arm(engine.get());
        const QJSValue value = engine->evaluate(program);
        Watchdog::Instance().Disarm(engine.get());
        engine->setInterrupted(false);
        result.error = value.isError();
        if (value.isBool())
            result.text = value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
        else
            result.text = value.toString();
    }
    if (HasOwnGlobals(engine.get()))
        engine.reset();
    return result;
}

QString Evaluate(const QString &text, const BlkParaData *config, bool *ok, int depth);

qint64 EntityNumber(const ParaEntity *entity, const BlkParaData *config, int depth)
{
    if (Evaluate(entity->val_size, config, nullptr, depth + 1).toInt() > 1) {
        qint64 sum = 0;
        for (const QString &part : entity->sel_val.split(QLatin1Char(',')))
            sum += part.trimmed().toLongLong();
        return sum;
    }
    return entity->sel_val.trimmed().toLongLong();
}

QString TokenValue(const QString &token, const BlkParaData *config, int depth)
{
    const QStringList parts = token.split(QLatin1Char('#'), Qt::SkipEmptyParts);
    if (parts.size() < 2)
        return QStringLiteral("0");
    const ParaEntity *entity = FindEntity(config, parts[0], parts[1]);
    if (!entity)
        return QStringLiteral("0");
    if (parts.size() > 2 && parts[2] == QLatin1String("i"))
        return QString::number(entity->sel_idx);
    return QString::number(EntityNumber(entity, config, depth));
}

QString Evaluate(const QString &text, const BlkParaData *config, bool *ok, int depth)
{
    if (ok)
        *ok = true;
    if (text.trimmed().isEmpty())
        return QString();
    if (IsNumericText(text, true))
        return text;
    if (depth > kMaxNesting) {
        if (ok)
            *ok = false;
        return QStringLiteral("0");
    }

    QStringList tokens;
    ExtractBetween(text, QStringLiteral("["), QStringLiteral("]"), tokens);
    QString program = text;
    for (const QString &token : tokens) {
        const QString bracketed = QLatin1Char('[') + token + QLatin1Char(']');
        if (program.contains(bracketed))
            program.replace(bracketed, TokenValue(token, config, depth));
    }

    bool is_integer = false;
    const qint64 integer = program.toLongLong(&is_integer);
    if (is_integer && program == QString::number(integer))
        return program;

    const ScriptResult result = RunScript(program);
    if (result.error && ok)
        *ok = false;
    return result.text;
}

} // namespace

QString ScriptEval(const QString &text, const BlkParaData *config, bool *ok)
{
    return Evaluate(text, config, ok, 0);
}
