#pragma once
// The normalisation values of a head's nozzles: one signed byte a nozzle that trims its drive voltage. A
// service aid: it reads a colour of a head into a text file, changes the values, and loads such a file back.

enum class NormOperation {
    Edit,         ///< adds an offset to the present values and writes them to the edited file
    LoadOriginal, ///< the file of the values found at first back into the head
    LoadEdited,   ///< the edited file into the head
};

/// Works one colour (1 support, 2 structure) of the head on `board`. Files in the working directory:
/// "<serial number>_<waveform>_original.norm", written when there is none yet, and "..._edited.norm", one
/// value a line. 0, the library's error, or -1; a failure is logged. Any thread.
int testMethodforAlteringNormValues(int board, int color, NormOperation operation, int offset = 0);

/// Both colours: adds an offset to each and loads the result; with `factory` loads what was found at first
/// instead. The first failure ends it. Any thread.
int alterNormValues(int board, int supportOffset, int structureOffset, bool factory);
