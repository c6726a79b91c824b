#pragma once
// An installation of its own in a temporary folder, for one end-to-end test.

#include "PrinterRig.h"
#include "TestMesh.h"

#include <QTemporaryDir>
#include <QVariantMap>
#include <memory>

class TestPrinter
{
public:
    TestPrinter();

    /// Packs a small bar into the USB folder under this name. Further options go to tzlpack.
    bool makeModel(const QString &name, const QStringList &packOptions = {}, double heightMm = 0.7,
                   bool (*writeMesh)(const QString &file, double height) = writeTeeBar);
    /// Time scale of machine and program; 100 when not set.
    void setScale(double scale) { m_scale = scale; }
    /// Starts machine and program.
    bool start(const QStringList &environment = {}, bool withMachine = true);
    PrinterRig &rig() { return *m_rig; }
    /// Waits until the program has read the four bottles after its start. Their messages own the form until then,
    /// and what anyone else says is lost.
    bool settle();
    /// Starts the program anew and settles.
    bool restart();
    /// Settles, brings the model in and starts it.
    bool print(const QString &name);
    /// Ends program and machine; the machine's report.
    QJsonObject stop();
    /// Holds the printed layers against a fresh slicing; `sequence` names the layers as printed, empty for all in order.
    /// Differing dots, or -1 when it could not be compared.
    int differingDots(const QString &name, const QString &sequence = {});

    /// The violations of a report, a line each; "no report" when it is empty.
    static QString violations(const QJsonObject &report);

    /// What a sanitizer wrote to the program's output; empty without one.
    static QString sanitizerReports(const TestPrinter &printer);

    /// Where the program's remote link listens.
    quint16 remotePort() const { return m_remotePort; }
    QString install() const { return m_folder.path() + "/install"; }
    QString usb() const { return m_folder.path() + "/usb"; }
    QString out() const { return m_folder.path() + "/out"; }
    /// Changes keys of a JSON file under config/.
    bool configure(const QString &file, const QVariantMap &values);
    /// Rows of a query on the program's database.
    QList<QVariantMap> query(const QString &statement);
    /// pelora.log and event.csv.
    QString log() const;
    QString error() const { return m_rig && m_error.isEmpty() ? m_rig->error() : m_error; }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<PrinterRig> m_rig;
    QString m_error;
    int m_cardReads = 0; // before this start, by the log
    quint16 m_remotePort = 0;
    double m_scale = RigOptions().scale;
};
