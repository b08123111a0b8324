// Reader of the program's settings file "ZEMA.cfg" in bin_dir; the program never writes it.
#pragma once

#include "app/AbstractFileHandling.h"

struct AppSettings;

class ZemaSettingsFileIO : public AbstractFileHandling
{
    Q_OBJECT
public:
    ZemaSettingsFileIO(const QString &root_dir, ErrorList *error_list, qint32 silent,
                       QObject *parent = nullptr);

    // Fills `settings` from bin_dir + "/ZEMA.cfg"; what the file lacks keeps its default.
    bool ReadSettings(AppSettings *settings, const QString &title);
};
