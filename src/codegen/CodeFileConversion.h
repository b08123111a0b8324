// Conversion of a block's code files to and from ".enc": the settings of one run, the suffix rule
// and the conversion of a work list. The tree walk over blocks lives in the main window.
#pragma once

#include <QString>
#include <QStringList>

struct ConversionSettings {
    QString path;
    qint32 key = 0;
    bool decrypt = false;
    bool subdirs = false;
    bool single_file = false;
    bool fortran = false;
    bool python = false;
    bool all_types = false;
};
