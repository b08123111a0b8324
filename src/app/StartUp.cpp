#include "app/StartUp.h"

#include "app/AppSettings.h"
#include "app/Entitlement.h"
#include "app/MainWindow.h"
#include "app/PackedArgument.h"
#include "app/Prompt.h"
#include "app/WaitCursor.h"
#include "app/ZemaSettingsFileIO.h"
#include "params/BlockRegistry.h"

#include <QDir>

MainWindow *StartUp(const PackedArgument &packed)
{
    Prompt::InstallFileReportHook();
    const LicenceToken licence = ReadLicenceToken(packed.licence_token);
    // Without a valid token the tool speaks for the product release it was built with.
    const QString version = licence.valid ? licence.product_version
                                          : QStringLiteral(ZEMA_VERSION_TEXT);
    auto *window = new MainWindow(version, packed.cli_on);

    AppSettings *settings = CreateAppSettings(window);
    settings->root_dir = QDir::fromNativeSeparators(packed.root_dir);
    settings->third_dir = QDir::fromNativeSeparators(packed.third_dir);
    settings->bin_dir = settings->root_dir + "/bin_win";
    {
        WaitCursor wait;
        ZemaSettingsFileIO(settings->root_dir, nullptr, 0).ReadSettings(settings, QStringLiteral("ZEMA"));
    }
    InitRegistry(window);
    settings->licence_token = packed.licence_token;
    settings->licence_level = licence.level;
    settings->licence_modules = licence.modules;
    settings->licence_expiry = licence.expiry;
    window->LateInitialise();
    return window;
}
