#include "remote/RemoteCommands.h"

const QVector<RemoteCommand> &remoteCommands()
{
    static const QVector<RemoteCommand> table = {
        {"Inject", injectCommand},
        {"WaveForm", waveFormCommand},
        {"Ink.json", parameterFileCommand},
        {"Sys.json", parameterFileCommand},
        {"Air.json", parameterFileCommand},
        {"Fan.json", parameterFileCommand},
        {"UseInfo.json", parameterFileCommand},
        {"Device", deviceCommand},
        {"MaterialBox", materialBoxCommand},
        {"Machine", machineCommand},
        {"HeartBeat", heartBeatCommand},
        {"PrintQueue", printQueueCommand},
        {"MachineName", parameterFileCommand},
        {"Materials", parameterFileCommand},
        {"Settings", parameterFileCommand},
        {"Styles", parameterFileCommand},
        {"FileListSort", fileListSortCommand},
        {"FileDelete", fileDeleteCommand},
        {"FileListReprint", fileListReprintCommand},
        {"PrintFileInfo", printFileInfoCommand},
        {"FileList", fileListCommand},
        {"FileListCnt", fileListCntCommand},
        {"SQL", sqlCommand},
    };
    return table;
}
