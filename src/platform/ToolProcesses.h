#pragma once
// External tools by image name. Only processes whose working directory is this installation folder are meant,
// so that two installations never touch each other's tools. The image is the executable's file name or, for a
// script, the file name of the script that its interpreter runs. Any thread.

#include <QString>

/// Ends every such process with force and returns how many there were. The calling process is never meant.
int killImage(const QString &image);

/// Memory of all such processes in the words of the task list, for example "lamorel.exe 1234 Console 1 12,345
/// K"; empty when there is none.
QString imageMemoryText(const QString &image);
