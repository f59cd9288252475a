#include "mutation.h"

#include <QDir>
#include <QFile>

namespace test {

namespace {

constexpr int mostChanges = 8;
constexpr int mostBlock = 512;
constexpr qint64 largestNeighbour = 1 << 18;
constexpr int mostNeighbours = 8;

unsigned below(unsigned bound, std::mt19937& random)
{
    return bound == 0 ? 0 : unsigned(random() % bound);
}

void change(QByteArray& bytes, std::mt19937& random)
{
    const auto size = unsigned(bytes.size());
    const int at = int(below(size, random));
    const int length = int(std::min(1 + below(mostBlock, random), size - unsigned(at)));
    switch (below(7, random)) {
    case 0:
        bytes[at] = char(bytes.at(at) ^ char(1u << below(8, random)));
        break;
    case 1: {
        const quint32 extremes[] = {0, 1, 0x7fffffff, 0x80000000, 0xffffffff, 0x7f800000, 0xffff};
        const quint32 value = extremes[below(7, random)];
        bytes.replace(at, 4, reinterpret_cast<const char*>(&value), 4);
        break;
    }
    case 2:
        bytes.remove(at, length);
        break;
    case 3:
        bytes.insert(int(below(size, random)), bytes.mid(at, length));
        break;
    case 4:
        bytes.truncate(at + 1);
        break;
    case 5: {
        const QByteArray numbers[] = {"-1", "999999999", "4294967296", "1e39", "nan", ""};
        const int digit = bytes.indexOf(char('0' + below(10, random)), at);
        if (digit >= 0)
            bytes.replace(digit, 1, numbers[below(6, random)]);
        break;
    }
    default:
        for (int i = at; i < at + length; ++i)
            bytes[i] = char(random());
    }
}

} // namespace

void mutate(QByteArray& bytes, std::mt19937& random)
{
    const unsigned changes = 1 + below(mostChanges, random);
    for (unsigned i = 0; i < changes && !bytes.isEmpty(); ++i)
        change(bytes, random);
}

QString copyMutated(const QString& original, const QString& folder, std::mt19937& random)
{
    const QFileInfo source(original);
    int copied = 0;
    for (const QFileInfo& neighbour : source.dir().entryInfoList(QDir::Files, QDir::Size)) {
        if (neighbour.size() <= largestNeighbour && neighbour != source &&
            copied < mostNeighbours) {
            QFile::copy(neighbour.filePath(), folder + '/' + neighbour.fileName());
            ++copied;
        }
    }
    QFile from(original);
    from.open(QIODevice::ReadOnly);
    QByteArray bytes = from.readAll();
    mutate(bytes, random);
    QFile to(folder + '/' + source.fileName());
    to.open(QIODevice::WriteOnly);
    to.write(bytes);
    return to.fileName();
}

} // namespace test
