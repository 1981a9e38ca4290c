#pragma once

#include <QString>

// Deletes a folder with everything in it, hidden and system entries included: folders
// first, depth first. The first entry that cannot be removed ends the walk (false; the
// rest stays on disk). A folder that is not there counts as removed.
bool removeFolderTree(const QString &path);
