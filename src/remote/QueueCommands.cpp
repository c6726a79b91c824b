// The queue, changed from afar. Nothing here can be refused: the answer comes after the change, whatever it
// did, and the page is shown anew after the answer.

#include "printdata/PrintQueue.h"
#include "printdata/QueueNotice.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"

namespace
{
/// The client's own changes are no news to it.
void answerChange(const RemoteCall &call, ReplyHead head)
{
    call.replyWith(QStringLiteral("Result"), QStringLiteral("Success"), head);
    refreshQueue(false);
}
} // namespace

void printQueueCommand(const RemoteCall &call)
{
    QJsonObject reply{{"Title", "PrintQueue"}};
    if (call["Action"].toString() == QLatin1String("Delete")) {
        removeModel(call["FileName"].toString());
        reply.insert(QStringLiteral("Status"), 1);
        reply.insert(QStringLiteral("Error"), 1); // a constant of the protocol: clients take it for done
    }
    call.reply(reply, ReplyHead::Own);
}

void fileListSortCommand(const RemoteCall &call)
{
    const QString name = call["FileName"].toString();
    const int status = call["Status"].toInt();
    if (call["IsTop"].toBool())
        moveToTop(name, status);
    else
        moveRow(name, call["Direction"].toBool(), status);
    answerChange(call, ReplyHead::Own);
}

void fileDeleteCommand(const RemoteCall &call)
{
    removeModel(call["File"].toString());
    answerChange(call, ReplyHead::Echo);
}

void fileListReprintCommand(const RemoteCall &call)
{
    reprintModel(call["FileName"].toString());
    answerChange(call, ReplyHead::Own);
}
