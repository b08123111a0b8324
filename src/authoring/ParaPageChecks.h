// The checks of a Parameters or Initial Conditions record as a whole: array sizes, parameter
// signalling, names and types against the block's ports, and the targets of entity controls.
#pragma once

#include <QString>
#include <QStringList>

class ErrorList;
struct BlkParaData;
struct ParaEntity;
struct ParaGroup;

struct ParaPageContext {
    BlkParaData *data = nullptr;   // the page's record; the checks clear each entity's editor
    QString prefix;                // "Parameters" or "Initial Conditions"
    QStringList port_names;        // of the presentation record
};

// Every finding is an Error, prefixed and added to `error_list`; a null record checks nothing.
void ValidateParaData(const ParaPageContext &context, ErrorList *error_list);
// The array size of `text`: the number itself (negative ones reported), 1 for any script field
// whatever was reported about it, -1 when its square braces do not pair.
qint32 CheckParaArraySize(const QString &text, const BlkParaData *data, const ParaGroup *group,
                          const ParaEntity *entity, ErrorList *error_list, const QString &prefix);
