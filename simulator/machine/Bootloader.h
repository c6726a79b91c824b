#pragma once
// The boot loader of a board: takes an image block by block and then runs it. It is entered by command 2,
// needs a moment to start, is armed by 3, fed by 4 and left by 5.

#include "Frame.h"

#include <QString>
#include <functional>
#include <vector>

class Bootloader
{
public:
    /// Told of what no loader would forgive: name and detail.
    using Complaint = std::function<void(const QString &name, const QString &detail)>;
    explicit Bootloader(Complaint complain) : m_complain(std::move(complain)) {}

    static bool isLoaderCommand(int command) { return command >= 2 && command <= 5; }
    /// The answer to a loader command at a machine time. A step that is refused comes back with another code.
    frame::Data answer(const frame::Data &request, double now);
    bool active() const { return m_state != State::Running; }
    int updates() const { return m_updates; }
    /// Bytes of the image in work, or of the last one, filled up to whole blocks.
    const std::vector<uint8_t> &image() const { return m_image; }

    // Faults. A block that is lost is neither written nor answered.
    int refusedStep = 0; ///< 2 to 5; 0: none
    int lostBlock = 0;   ///< counts from 1; 0: none
    bool isLost(const frame::Data &request) const;

private:
    enum class State { Running, Entered, Armed };

    bool carryOut(const frame::Data &request, double now);
    bool takeBlock(const frame::Data &request);

    Complaint m_complain;
    State m_state = State::Running;
    double m_enteredAt = 0;
    int m_blocks = 0;
    std::vector<uint8_t> m_image;
    int m_updates = 0;
};
