// temptable TABLE.csv TEMP.bin: makes the machine's temperature file from a readable table.
//
// The table has a line per zone: place, zone, name, start, printing, keep-warm. The place is "head1" to
// "head3" with sensors 1 to 3 as zones, or one of the board groups below with zones 1 to 7. Degrees are 0 to
// 255; what no line names is 0. Lines that begin with # are comments.
//
// The file, little-endian and without padding:
//   0    u32  version, 16
//   4    768  12 groups (8 in use, 4 spare) of 4 records of 16 bytes; record 0 start, 1 printing, 2
//   keep-warm, 3 what
//             was measured; a record is u32 board, 8 data bytes (command, zones 1 to 7) and 4 bytes
//   772  36   head sensors: 4 rows as the records, of 9 bytes (head 1 sensors 1 to 3, head 2, head 3)

#include <cstdint>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace
{
constexpr size_t groupsAt = 4;
constexpr size_t recordSize = 16;
constexpr size_t groupSize = 4 * recordSize;
constexpr size_t headsAt = 772;
constexpr size_t headRow = 9;
constexpr size_t fileSize = 808;
constexpr size_t modes = 3;
constexpr size_t fieldsPerLine = 6;

struct Place {
    size_t zones;
    size_t first; ///< offset of zone 1 in row 0
    size_t row;   ///< bytes from row to row
};

const std::map<std::string, Place> places = [] {
    std::map<std::string, Place> all;
    const char *const groups[] = {"ink31", "ink32", "ink33", "ink34", "head41", "head43", "air32", "air71"};
    for (size_t group = 0; group < std::size(groups); ++group)
        all[groups[group]] = {7, groupsAt + group * groupSize + 5, recordSize};
    for (size_t head = 0; head < 3; ++head)
        all["head" + std::to_string(head + 1)] = {3, headsAt + head * 3, headRow};
    return all;
}();

/// The number in `text` when it is one from `least` to `most`.
bool number(const std::string &text, unsigned least, unsigned most, unsigned &value)
{
    std::istringstream stream(text);
    return (stream >> value) && (stream >> std::ws).eof() && value >= least && value <= most;
}

/// Enters one line of the table; an empty text, or what is wrong with it.
std::string enter(const std::string &line, std::vector<uint8_t> &file)
{
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream >> std::ws, field, ',');)
        fields.push_back(field);
    if (fields.size() != fieldsPerLine)
        return "not " + std::to_string(fieldsPerLine) + " fields";
    const auto place = places.find(fields[0]);
    if (place == places.end())
        return "no place " + fields[0];
    unsigned zone = 0;
    if (!number(fields[1], 1, unsigned(place->second.zones), zone))
        return "no zone " + fields[1];
    for (size_t mode = 0; mode < modes; ++mode) {
        unsigned degrees = 0;
        if (!number(fields[3 + mode], 0, 255, degrees))
            return "no temperature " + fields[3 + mode];
        file[place->second.first + mode * place->second.row + zone - 1] = uint8_t(degrees);
    }
    return std::string();
}
} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::cerr << "usage: temptable TABLE.csv TEMP.bin\n";
        return 2;
    }
    std::ifstream table(argv[1]);
    std::vector<uint8_t> file(fileSize, 0);
    file[0] = 16;
    int lineNumber = 0;
    for (std::string line; std::getline(table, line);) {
        ++lineNumber;
        if (line.empty() || line[0] == '#')
            continue;
        const std::string wrong = enter(line, file);
        if (!wrong.empty()) {
            std::cerr << argv[1] << ":" << lineNumber << ": " << wrong << "\n";
            return 1;
        }
    }
    std::ofstream out(argv[2], std::ios::binary);
    out.write(reinterpret_cast<const char *>(file.data()), std::streamsize(file.size()));
    if (lineNumber > 0 && out.flush())
        return 0;
    std::cerr << (lineNumber > 0 ? argv[2] : argv[1]) << ": cannot be "
              << (lineNumber > 0 ? "written\n" : "read\n");
    return 1;
}
