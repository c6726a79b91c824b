#pragma once
// An installation folder with a small model, a slicer of a few lines, scripted boards and the noting head
// library, for tests of jobs. One a process: configuration, database and bridge are the process's own.

#include "engine/XdmControl.h"
#include "scripted/FakeBridge.h"
#include "scripted/fakehib.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QSqlRecord>
#include <QStringList>
#include <QVector>

/// Opens what a job keeps from others, and notes what it tells the operator.
class ProbeJob : public XdmControl
{
public:
    using XdmControl::configPage;
    using XdmControl::configPrintBar;
    using XdmControl::configPrintBarTest;
    using XdmControl::printImage;
    using XdmControl::PrintRecord;
    using XdmControl::setState;

    ProbeJob();
    ~ProbeJob() override;
    /// "title|text|icon|buttons" of each message so far, the buttons in hexadecimal.
    QStringList messages() const;
    QStringList takeMessages();
    bool hasMessage(const QString &part) const { return !messages().filter(part).isEmpty(); }
    std::atomic<int> ended{0}; ///< stopPrintSignals so far

private:
    mutable Mutex m_messageMutex; // the job's thread notes while the test looks
    QStringList m_messages PELORA_GUARDED_BY(m_messageMutex);
};

class JobRig
{
public:
    JobRig();
    /// A healthy machine, an idle status, an empty database.
    void reset();
    /// How often the ink stack ignores the magnet from now on: when it is to be taken, and when it is to be
    /// left.
    void stickStack(int coupling, int uncoupling);
    /// Writes a model for that machine, enters it into the queue and loads it.
    bool loadModel(const QString &name = QStringLiteral("part.tzl"), const QByteArray &machine = "Pelora620");
    /// Starts the tool, which says that `ready` of `total` layers are sliced, and writes the files of `ready`
    /// layers.
    bool slice(int ready, int total);
    QVector<QSqlRecord> query(const QString &statement) const;

    /// The head library's calls since the last take, those whose name begins so.
    QStringList hibCalls(const char *name = "");
    TestInstall install;
    FakeBridge bridge;
    decltype(&fakeHibFail) hibFail = nullptr;
    decltype(&fakeHibSet) hibSet = nullptr;
    decltype(&fakeHibPicture) hibPicture = nullptr;

    static constexpr quint8 supportByte = 0x11; ///< of every layer file
    static constexpr quint8 structureByte = 0x22;

private:
    void setUpStack();

    std::atomic<bool> m_coupled{false}; // the bridge's thread works the stack
    std::atomic<int> m_stickCoupling{0};
    std::atomic<int> m_stickUncoupling{0};
    QString m_model;
    decltype(&fakeHibTakeCalls) m_takeCalls = nullptr;
};
