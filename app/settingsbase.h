#pragma once

#include <QString>

// The folder under which the user's programs keep their settings, as the system
// names it: on Windows the roaming application-data folder of the account, from the
// Known Folder API (an environment variable may be unset or point anywhere); on
// Linux the XDG configuration home. Empty when the system does not say.
QString userSettingsBase();
