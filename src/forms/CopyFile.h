#pragma once
// Copying a file while the operator watches.

#include <QString>

class IMsgForm;

/// Copies `src` to `dst` behind a progress message of `form`. Holds the GUI thread: events are processed
/// once, before the first block. Unless `keepAsIs`, a short copy is removed and false, and a whole one gets
/// `dst`.md5 beside it. Paths are this system's. GUI thread.
bool copyFile(IMsgForm *form, const QString &src, const QString &dst, bool keepAsIs);
