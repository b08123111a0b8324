// Registers the icon resources of the widget library; a static library's resources are not
// registered by themselves.
#include "app/AppIcons.h"

#include <QtGlobal>
#include <mutex>

// Q_INIT_RESOURCE names a global function, so it must be called outside any namespace.
static void RegisterIconResources() { Q_INIT_RESOURCE(icons); }

void InitIcons()
{
    static std::once_flag once;
    std::call_once(once, RegisterIconResources);
}
