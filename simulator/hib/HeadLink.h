#pragma once
// The library's connection to the machine. Not for concurrent calls, like the library itself.

#include "common/HeadProtocol.h"
#include "common/SparsePlane.h"

#include <initializer_list>
#include <vector>

class HeadLink
{
public:
    ~HeadLink();

    /// Connects to the socket named by "HeadsSocket" in config/Platform.json of the working directory. False
    /// when there is none: then there are no boards.
    bool connect();
    bool connected() const { return m_socket >= 0; }

    /// One request and its answer; heads::NoBoards without a connection. `timeoutMs` below 0 waits for good:
    /// only as long as the machine is there.
    int call(heads::Op op, std::initializer_list<double> arguments, std::vector<double> *values = nullptr,
             int timeoutMs = -1);
    int call(heads::Op op, const std::vector<double> &arguments);
    /// A request that is not answered; it leaves with the next call, or when many have gathered.
    int post(heads::Op op, std::initializer_list<double> arguments);
    /// Hands over both planes of a picture.
    int arm(std::initializer_list<double> arguments, const SparsePlane &support,
            const SparsePlane &structure);

private:
    void append(heads::Op op, const double *arguments, size_t count, size_t extraBytes = 0);
    void appendBytes(const void *bytes, size_t size);
    bool flush();
    int receive(std::vector<double> *values, int timeoutMs);
    bool readExactly(void *target, size_t size);
    void disconnect();

    int m_socket = -1;
    uint32_t m_sequence = 0;
    std::vector<uint8_t> m_out;
};
