// The plug-in by which a test or a demo works the unchanged program: loaded with
// QT_QPA_GENERIC_PLUGINS=operator, it listens on the local socket that PELORA_OPERATOR names. Without that
// name it does nothing.
#include "OperatorServer.h"

#include <QCoreApplication>
#include <QGenericPlugin>
#include <QTimer>

class OperatorPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "operator.json")
public:
    QObject *create(const QString &key, const QString &) override
    {
        const QString path = qEnvironmentVariable("PELORA_OPERATOR");
        if (key.compare("operator", Qt::CaseInsensitive) != 0 || path.isEmpty())
            return nullptr;
        auto *server = new OperatorServer(path);
        // Plug-ins are made while the application is still being built: it listens once the event loop runs.
        QTimer::singleShot(0, server, &OperatorServer::listen);
        return server;
    }
};

#include "OperatorPlugin.moc"
