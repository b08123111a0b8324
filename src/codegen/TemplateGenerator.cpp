#include "codegen/TemplateGenerator.h"

#include "codegen/PyInterfaceFiles.h"
#include "pages/BlkCodeData.h"
#include "codegen/TemplateText.h"

#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <memory>

namespace {

// One generated file: opened, truncated, before any text is built.
struct OutFile {
    std::unique_ptr<QFile> file;
    const char *failure;
};

bool OpenOut(OutFile &out, const QString &path, const char *failure)
{
    out.file = std::make_unique<QFile>(path);
    out.failure = failure;
    return out.file->open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text);
}

} // namespace

TemplateOutcome GenerateTemplateCode(const TemplateInputs &inputs, const QString &block_dir,
                                     const QString &root_dir,
                                     const std::function<bool(const QString &)> &confirm_overwrite)
{
    TemplateOutcome outcome;
    const TemplateContext context = BuildTemplateContext(inputs);
    const QString dir = block_dir + "/src/";
    const QString base = dir + context.class_name;

    // Only the header and the source are asked about; the language files are simply rewritten.
    if ((QFileInfo::exists(base + ".h") || QFileInfo::exists(base + ".cpp"))
        && !confirm_overwrite(QStringLiteral("Existing template code files will be overwritten. Do you want to continue generating template code."))) {
        outcome.declined = true;
        return outcome;
    }

    OutFile header, source, python, fortran;
    struct Step {
        OutFile *out;
        const char *suffix;
        const char *failure;
        bool wanted;
    };
    const Step steps[] = {
        {&header, ".h", "Cannot open header file to generate code.", true},
        {&source, ".cpp", "Cannot open cpp file to generate code.", true},
        {&python, ".py", "Cannot open Python(.py) file to generate code.", context.options.python},
        {&fortran, ".f90", "Cannot open Fortran(.f90) file to generate code.", context.options.fortran},
    };
    // Files opened before a failure stay truncated, as they were.
    for (const Step &step : steps) {
        if (!step.wanted)
            continue;
        if (!OpenOut(*step.out, base + step.suffix, step.failure)) {
            outcome.message = QString::fromLatin1(step.failure);
            return outcome;
        }
    }

    auto write = [&outcome](OutFile &out, const QString &text) {
        QTextStream stream(out.file.get());
        stream << text;
        stream.flush();
        out.file->close();
        outcome.written.append(out.file->fileName());
    };
    write(header, TemplateHeaderText(context));
    write(source, TemplateSourceText(context));
    if (context.options.fortran)
        write(fortran, FortranTemplateText(context));
    if (context.options.python) {
        write(python, PythonTemplateText(context));
        const int nports = inputs.code ? inputs.code->ports.size() : 0;
        outcome.message = WritePyInterfaceFiles(root_dir, dir, context.class_name, context.pyintf_name,
                                                nports, context.python_params.size(), &outcome.written);
    }
    return outcome;
}
