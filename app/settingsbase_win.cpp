#include "app/settingsbase.h"

#include <shlobj.h>
#include <windows.h>

QString userSettingsBase()
{
    PWSTR path = nullptr;
    // KF_FLAG_DONT_VERIFY: the folder itself, even before anything made it.
    const HRESULT result = SHGetKnownFolderPath(FOLDERID_RoamingAppData, KF_FLAG_DONT_VERIFY, nullptr, &path);
    QString folder;
    if (SUCCEEDED(result) && path)
        folder = QString::fromWCharArray(path);
    CoTaskMemFree(path);
    return folder;
}
