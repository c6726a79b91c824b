#include "Bootloader.h"

#include <algorithm>

namespace
{
enum Step : uint8_t { Enter = 2, Arm = 3, Block = 4, Finish = 5 };
constexpr uint8_t filler = 0xFF;
constexpr uint8_t refusal = 0xFE;
constexpr int blockBytes = 6;
constexpr double startSeconds = 1.5; ///< the loader's start; the program gives it two seconds
} // namespace

frame::Data Bootloader::answer(const frame::Data &request, double now)
{
    frame::Data data = request;
    if (request[0] == refusedStep || !carryOut(request, now))
        data[0] = refusal;
    return data;
}

bool Bootloader::isLost(const frame::Data &request) const
{
    return request[0] == Block && lostBlock > 0 && m_blocks + 1 == lostBlock;
}

bool Bootloader::carryOut(const frame::Data &request, double now)
{
    const bool bare =
        std::all_of(request.begin() + 1, request.end(), [](uint8_t byte) { return byte == filler; });
    if (request[0] != Block && !bare)
        m_complain("loader-request", QString("step %1 with other bytes than FF").arg(request[0]));
    switch (request[0]) {
    case Enter:
        m_state = State::Entered;
        m_enteredAt = now;
        return true;
    case Arm:
        if (m_state != State::Entered || now < m_enteredAt + startSeconds) {
            m_complain("loader-not-ready", "the loader is armed before it was entered and has started");
            return false;
        }
        m_state = State::Armed;
        m_blocks = 0;
        m_image.clear();
        return true;
    case Block:
        return takeBlock(request);
    default:
        // Without a block the old version runs on.
        const bool written = m_state == State::Armed && m_blocks > 0;
        m_state = State::Running;
        m_updates += written;
        return written;
    }
}

bool Bootloader::takeBlock(const frame::Data &request)
{
    if (m_state != State::Armed || request[7] != filler) {
        m_complain("firmware-block", QString("block %1 is not as it must be").arg(m_blocks + 1));
        return false;
    }
    ++m_blocks;
    m_image.insert(m_image.end(), request.begin() + 1, request.begin() + 1 + blockBytes);
    return true;
}
