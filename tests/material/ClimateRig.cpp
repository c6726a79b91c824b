#include "tests/material/ClimateRig.h"

#include "links/Usb2Can.h"

#include <QDir>
#include <QFile>
#include <QLibrary>

ClimateRig::ClimateRig()
{
    setPorts(cards.path(), bridge.path());
    QFile::copy(CLIMATE_HIB_FILE, "libhibApiDll64.so");
    QLibrary library(QDir::current().absoluteFilePath("hibApiDll64"));
    hib = reinterpret_cast<ClimateHib *(*)()>(library.resolve("climateHib"))();
    usb2Can()->OpenPort(16, 115200);
}

ClimateRig::~ClimateRig()
{
    usb2Can()->ClosePort();
}

void ClimateRig::setPorts(const QString &com5, const QString &com16)
{
    const QString none = "/dev/no-such-port";
    m_install.setPlatform(
        {{"COM5", com5.isEmpty() ? none : com5}, {"COM16", com16.isEmpty() ? none : com16}});
}

void ClimateRig::setRests(const std::array<quint32, 4> &grams)
{
    cards.withRack([&](BottleRack &rack) {
        for (int position = 1; position <= BottleRack::positions; ++position)
            rack.at(position).card.rest = grams[size_t(position - 1)];
    });
}

quint32 ClimateRig::cardRest(int position)
{
    return cards.withRack([&](BottleRack &rack) { return rack.at(position).card.rest; });
}

QStringList ClimateRig::lines(const QString &file) const
{
    QStringList texts;
    for (const QByteArray &line : m_install.log(file).split('\n'))
        if (!line.isEmpty())
            texts << QString::fromUtf8(line.mid(line.indexOf(',') + 1)).remove('\r');
    return texts;
}

QString ClimateRig::commands() const
{
    QStringList all;
    for (const BoardRequest &request : bridge.requests())
        all << QString("%1:%2").arg(request.board).arg(request.command(), 2, 16, QLatin1Char('0'));
    return all.join(' ');
}

QStringList ClimateRig::data(int board, int command) const
{
    QStringList all;
    for (const BoardRequest &request : bridge.requests(board, command))
        all << request.data.toHex(' ');
    return all;
}
