#pragma once
// A contactless reader chip, MFRC522, as its data sheet tells it: registers, FIFO, commands, timer. What it
// sends goes out through a function, so that the chip knows no card.

#include "ContactlessCard.h"

#include <array>
#include <deque>

class ReaderChip
{
public:
    struct World {
        std::function<Bytes(const AirFrame &frame)> exchange; ///< an empty answer: nobody is there
        std::function<void()> fieldOff;
        std::function<double()> seconds;
        ContactlessCard::Violation violation;
    };

    explicit ReaderChip(World world);

    uint8_t read(int address);
    void write(int address, uint8_t value);

private:
    struct Timer {
        bool running = false;
        double end = 0;
    };

    void reset();
    void setRegister(int address, uint8_t value);
    void command(uint8_t value);
    void control(uint8_t value);
    void level(uint8_t value);
    void fifoIn(uint8_t value);
    uint8_t fifoOut();
    void interrupts(int address, uint8_t value);
    void antenna(uint8_t value);
    void bitFraming(uint8_t value);
    void calculate();
    void transmit();
    void receive(Bytes answer);
    void startTimer();
    void lookAtTimer();
    bool antennaOn() const;
    uint8_t &at(int address) { return m_registers[size_t(address)]; }
    void violation(const QString &detail) const { m_world.violation("card-chip", detail); }

    World m_world;
    std::array<uint8_t, 64> m_registers{};
    std::deque<uint8_t> m_fifo;
    uint16_t m_crc = 0;
    Timer m_timer;
};
