// The blocks the generator suites share: together they reach every option of the template texts.
#pragma once

#include <QList>
#include <QString>

struct BlockData;

struct CodegenCase {
    QString name;              // the directory of its expected files under fixtures/codegen
    BlockData *block = nullptr; // owned by the caller: FreeBlockData
    // False for the cases whose text is deliberately not valid C++ (comment markers around
    // comments, undeclared `_dimsize` variables, names with blanks, macros named by a number).
    bool sane = true;
};

QList<CodegenCase> CodegenCases();
void FreeCodegenCases(QList<CodegenCase> &cases);
