// The generation of a block's template code from its records: the frame around the texts, with
// the overwrite question, the files in their order and the messages of a refusal.
#pragma once

#include "codegen/TemplateContext.h"

#include <QString>
#include <QStringList>
#include <functional>

struct TemplateOutcome {
    QStringList written;           // the paths written, in order
    QString message;               // the text of the box that ended the run; empty on success
    bool declined = false;         // the overwrite question was answered No
};

// `block_dir` must be non-empty; `root_dir` holds the Python interface reference files.
// `confirm_overwrite` is asked only when the header or the source exists already.
TemplateOutcome GenerateTemplateCode(const TemplateInputs &inputs, const QString &block_dir,
                                     const QString &root_dir,
                                     const std::function<bool(const QString &question)> &confirm_overwrite);
