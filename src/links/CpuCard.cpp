#include "links/CpuCard.h"

#include "links/CardAuth.h"
#include "links/CardBus.h"
#include "links/Mfrc522.h"
#include "platform/Clock.h"

#include <QDebug>
#include <QtEndian>

#include <cstring>
#include <new>

namespace
{

constexpr quint32 MAX_DEV_NUM = 7; // positions of the multiplexer
constexpr quint8 throughMultiplexer = 1;
constexpr int activations = 2;
constexpr unsigned activationPauseMs = 100;
constexpr quint8 cardKeyId = 0;

constexpr quint16 baseinfoFile = 0x0101;
constexpr quint16 weightFile = 0x0102;

// The baseinfo file: type 8 characters, weight u32, sn 15 characters, one byte unused, date u32.
constexpr int baseinfoSize = 32;
constexpr int typeSize = 8;
constexpr int weightAt = 8;
constexpr int snAt = 12;
constexpr int snSize = 15;
constexpr int dateAt = 28;
constexpr int weightSize = 4;
static_assert(typeSize < int(sizeof CardInfo::type) && snSize < int(sizeof CardInfo::sn),
              "room for the end mark");

quint32 number(const QByteArray &file, int at)
{
    return qFromLittleEndian<quint32>(file.constData() + at);
}

void printBytes(const char *title, const QByteArray &bytes)
{
    qDebug("%s%s", title, bytes.toHex(' ').toUpper().constData());
}

void fillBaseinfo(const QByteArray &file, CardInfo *info)
{
    std::memcpy(info->type, file.constData(), typeSize);
    info->weight = number(file, weightAt);
    std::memcpy(info->sn, file.constData() + snAt, snSize);
    info->date = number(file, dateAt) & ~0xFFu; // the low byte is not part of the record
    qDebug("weight = %d\n", int(info->weight));
    qDebug("date = %d\n", int(info->date));
    qDebug("type = %s\n", info->type);
    qDebug("sn = %s\n", info->sn);
}

} // namespace

struct CpuCard::Private {
    explicit Private(quint8 tag) : TagConfig(tag) {}

    /// Leads the line to a position, brings its card up and proves the key to it. The chip then stands in
    /// m_dev.
    bool openCard(quint32 channel, const char *absent);
    bool activateCard(quint32 channel, const char *absent);
    bool authenticate(quint32 channel);
    bool readFiles(quint32 channel, CardInfo *info);
    bool readBaseinfo(CardInfo *info);
    bool readWeight(CardInfo *info);
    bool writeWeightFile(quint32 weight);
    /// Sends the card to sleep and ends the operation.
    void closeCard();

    QByteArray portName;
    CardBus bus;
    std::unique_ptr<Mfrc522> m_dev; // the chip of the operation that runs
    const quint8 TagConfig;
};

CpuCard::CpuCard(quint8 tagConfig) : d(new Private(tagConfig))
{
    qDebug("Card lib info: %s,%d %s %s TagConfig=%d\n", __FILE__, __LINE__, __DATE__, __TIME__, tagConfig);
}

CpuCard::~CpuCard() = default;

int CpuCard::OpenPort(const char *name, quint32 baud)
{
    d->portName = name;
    bool isNumber = false;
    const int portNumber =
        d->portName.startsWith("COM") ? d->portName.mid(3).toInt(&isNumber) : 0; // "COM5" is port 5
    if (!isNumber || portNumber < 1)
        return -1;
    return d->bus.open(portNumber, baud == 9600 ? 9600 : 115200) ? 0 : -1;
}

int CpuCard::getCardInfo(quint32 channel, CardInfo *info)
{
    if (channel >= MAX_DEV_NUM) {
        qDebug("card num > MAX_DEV_NUM\n");
        return -1;
    }
    *info = CardInfo();
    qDebug("now search card[%d]\n", int(channel));
    CardInfo found;
    const bool good = d->openCard(channel, nullptr) && d->readFiles(channel, &found);
    d->closeCard();
    if (!good)
        return -1;
    *info = found; // only a card that was read whole leaves a trace
    return 0;
}

int CpuCard::writeWeight(quint32 channel, quint32 weight)
{
    if (channel >= MAX_DEV_NUM) {
        qDebug("card num > MAX_DEV_NUM\n");
        return 0;
    }
    const bool good = d->openCard(channel, "not find card\n") && d->writeWeightFile(weight);
    d->closeCard();
    return good ? 1 : 0;
}

bool CpuCard::Private::openCard(quint32 channel, const char *absent)
{
    if (bus.selectChannel(quint8(channel)) != 0) {
        qDebug("select dev %d failed\n", int(channel));
        return false;
    }
    m_dev.reset(new (std::nothrow) Mfrc522(&bus, throughMultiplexer));
    if (!m_dev) {
        qDebug("No memory\n");
        return false;
    }
    m_dev->prepare(TagConfig);
    return activateCard(channel, absent) && authenticate(channel);
}

bool CpuCard::Private::activateCard(quint32 channel, const char *absent)
{
    int result = m_dev->activate(Mfrc522::wakeUpAll);
    for (int i = 1; i < activations && result != Mfrc522::Activated; ++i) {
        Sleep(activationPauseMs);
        result = m_dev->activate(Mfrc522::wakeUpAll);
    }
    if (result != Mfrc522::Activated) {
        if (absent)
            qDebug("%s", absent);
        return false;
    }
    qDebug("find card[%d]:\n", int(channel));
    printBytes("\ttype: ", m_dev->typeBytes());
    printBytes("\tuid: ", m_dev->uidBytes());
    if (!m_dev->requestAnswerToSelect().isEmpty())
        return true;
    qDebug("activate card[%d] failed\n", int(channel));
    return false;
}

bool CpuCard::Private::authenticate(quint32 channel)
{
    m_dev->selectByName(QByteArray("\x3F\x00", 2)); // the master file
    QByteArray status; // a refusal shows at the next command, as the cards' issuer has it
    m_dev->getChallenge();
    if (m_dev->CPUExternalAuth(cardKeyId, cardKey(), &status))
        return true;
    qDebug("card[%d]: external authentication failed\n", int(channel));
    return false;
}

bool CpuCard::Private::readFiles(quint32 channel, CardInfo *info)
{
    if (!readBaseinfo(info)) {
        qDebug("card[%d]: get baseinfo failed\n", int(channel));
        return false;
    }
    if (!readWeight(info)) {
        qDebug("card[%d]: get weight failed\n", int(channel));
        return false;
    }
    return true;
}

bool CpuCard::Private::readBaseinfo(CardInfo *info)
{
    QByteArray answer;
    bool good = m_dev->selectFile(baseinfoFile, &answer);
    printBytes("Select baseinfo file recv: ", answer);
    if (!good)
        return false;
    good = m_dev->readBinary(0, baseinfoSize, &answer);
    printBytes("Read baseinfo file recv: ", answer);
    if (good)
        fillBaseinfo(answer, info);
    return good;
}

bool CpuCard::Private::readWeight(CardInfo *info)
{
    QByteArray answer;
    bool good = m_dev->selectFile(weightFile, &answer);
    printBytes("Select weight file recv: ", answer);
    if (!good)
        return false;
    good = m_dev->readBinary(0, weightSize, &answer);
    printBytes("Read weight file recv: ", answer);
    if (good) {
        info->rest_weight = number(answer, 0);
        qDebug("remain weight: %u\n", info->rest_weight);
    }
    return good;
}

bool CpuCard::Private::writeWeightFile(quint32 weight)
{
    QByteArray answer;
    if (!m_dev->selectFile(weightFile, &answer))
        return false;
    QByteArray file(weightSize, '\0');
    qToLittleEndian(weight, file.data());
    const bool good = m_dev->updateBinary(0, file, &answer);
    printBytes("Write weight file recv: ", answer);
    return good;
}

void CpuCard::Private::closeCard()
{
    if (m_dev)
        m_dev->halt();
    m_dev.reset();
}
