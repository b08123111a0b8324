// The C++ class that drives a block's Python class, made from the two reference files of the
// application tree by plain text substitution.
#pragma once

#include <QString>
#include <QStringList>

// Writes `<src_dir>/<pyintf_name>.h` and `.cpp` from `<root_dir>/source/src_py/
// py_interface_template.h` and `.cpp`, appending each path written to `written`. Returns the
// message of the first failure, after which nothing more is written; empty on success.
QString WritePyInterfaceFiles(const QString &root_dir, const QString &src_dir,
                              const QString &class_name, const QString &pyintf_name, int nports,
                              int nparams, QStringList *written);
