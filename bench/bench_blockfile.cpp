// Times loading and resaving of block definition files: a library of 1,000 ordinary blocks and
// one very large block (2,000 entities, 500 ports). Usage: bench_blockfile [--keep DIR]
#include "BenchBlocks.h"

#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "params/ConfigurationEntities.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>

namespace {

QTextStream out(stdout);

bool LoadAndMaybeSave(const QString &path, bool save)
{
    auto *block = new BlockData;
    block->path = path;
    bool ok = LoadBlockData(block, QString(), nullptr, QStringLiteral("ZEMA"), true);
    if (ok && save) {
        AuthValuesToWorking(block->config);
        ok = SaveBlockData(block, nullptr, QStringLiteral("ZEMA"), true);
    }
    FreeBlockData(block);
    return ok;
}

double Median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Report(const QString &what, double ms, int count)
{
    out << what.leftJustified(44) << QString::number(ms, 'f', 1).rightJustified(10) << " ms";
    if (count > 1)
        out << "   " << QString::number(ms * 1000.0 / count, 'f', 1) << " us per block";
    out << "\n";
    out.flush();
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir temp;
    QString dir = temp.path();
    const int keep = app.arguments().indexOf(QStringLiteral("--keep"));
    if (keep > 0 && keep + 1 < app.arguments().size()) {
        dir = app.arguments()[keep + 1];
        QDir().mkpath(dir);
    }
    CreateAppSettings(nullptr)->root_dir = dir;

    QElapsedTimer timer;
    timer.start();
    if (!MakeLibrary(dir + "/library", 1000) || !MakeLargeBlock(dir)) {
        out << "could not write the benchmark blocks in " << dir << "\n";
        return 1;
    }
    Report(QStringLiteral("generate and save 1,000 blocks + large block"), timer.elapsed(), 1);

    const QStringList library = QDir(dir + "/library").entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (bool save : {false, true}) {
        timer.restart();
        for (const QString &name : library)
            if (!LoadAndMaybeSave(dir + "/library/" + name, save))
                return 1;
        Report(save ? QStringLiteral("library: load + resave 1,000 blocks") : QStringLiteral("library: load 1,000 blocks"),
               timer.nsecsElapsed() / 1e6, library.size());
    }

    const QString large = dir + "/large_block";
    out << "large block file: " << QFileInfo(large + "/large_block.bdef").size() / 1024 << " KiB\n";
    for (bool save : {false, true}) {
        QList<double> runs;
        for (int i = 0; i < 7; ++i) {
            timer.restart();
            if (!LoadAndMaybeSave(large, save))
                return 1;
            runs.append(timer.nsecsElapsed() / 1e6);
        }
        Report(save ? QStringLiteral("large block: load + resave (median of 7)")
                    : QStringLiteral("large block: load (median of 7)"), Median(runs), 1);
    }
    return 0;
}
