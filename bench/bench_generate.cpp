// Times the generation of template code for the very large block (2,000 entities, 500 ports),
// once with the C++ pair alone and once with Python embedded (five files, the interface pair
// from the application tree). Usage: bench_generate APPDIR [--keep DIR]
#include "BenchBlocks.h"

#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "codegen/TemplateGenerator.h"
#include "params/BlkParaData.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>

namespace {

QTextStream out(stdout);

void Report(const QString &what, QList<double> runs, int files)
{
    std::sort(runs.begin(), runs.end());
    out << what.leftJustified(44) << QString::number(runs[runs.size() / 2], 'f', 1).rightJustified(10)
        << " ms  (median of " << runs.size() << ", max " << QString::number(runs.last(), 'f', 1)
        << "; " << files << " files)\n";
    out.flush();
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        out << "usage: bench_generate APPDIR [--keep DIR]\n";
        return 2;
    }
    const QString app_dir = args[1];
    QTemporaryDir temp;
    QString dir = temp.path();
    const int keep = args.indexOf(QStringLiteral("--keep"));
    if (keep > 0 && keep + 1 < args.size()) {
        dir = args[keep + 1];
        QDir().mkpath(dir);
    }
    const QString large = dir + "/large_block";
    if (!QFileInfo::exists(large + "/large_block.bdef") && !MakeLargeBlock(dir)) {
        out << "cannot write the large block in " << dir << "\n";
        return 1;
    }
    auto *block = new BlockData;
    block->path = large;
    if (!LoadBlockData(block, QString(), nullptr, QStringLiteral("ZEMA"), true)) {
        out << "cannot read the large block\n";
        return 1;
    }
    const QString target = dir + "/generated";
    QDir().mkpath(target + "/src");
    ParaEntity *lang = FindEntity(block->config, QStringLiteral("Code-Basic"),
                                  QStringLiteral("Embeds other language code"));
    for (int embed : {0, 1}) {
        if (lang) {
            lang->sel_idx = embed;
            lang->sel_val = lang->values.value(embed);
        }
        QList<double> runs;
        int files = 0;
        for (int run = 0; run < 7; ++run) {
            QElapsedTimer timer;
            timer.start();
            const TemplateOutcome outcome = GenerateTemplateCode(
                TemplateInputsOf(block), target, app_dir, [](const QString &) { return true; });
            runs.append(timer.nsecsElapsed() / 1e6);
            files = outcome.written.size();
            if (!outcome.message.isEmpty()) {
                out << outcome.message << "\n";
                FreeBlockData(block);
                return 1;
            }
        }
        Report(embed ? QStringLiteral("generate: large block, Python embedded")
                     : QStringLiteral("generate: large block, C++ only"),
               runs, files);
    }
    FreeBlockData(block);
    return 0;
}
