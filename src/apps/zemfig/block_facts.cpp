#include "block_facts.h"

#include "cli.h"

#include <QtCore/QFile>

#include <algorithm>

namespace Zem::Zemfig {

IO::BlockScan scanFile(QString const &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw InputError(fileName + QStringLiteral(": ") + file.errorString());
    std::string bytes;
    constexpr qint64 CHUNK_SIZE = 1 << 20;
    while (true) {
        QByteArray const chunk = file.read(CHUNK_SIZE);
        if (chunk.isEmpty())
            break;
        bytes.append(chunk.constData(), static_cast<std::size_t>(chunk.size()));
    }
    if (file.error() != QFileDevice::NoError)
        throw InputError(fileName + QStringLiteral(": ") + file.errorString());
    return IO::BlockScan(std::move(bytes));
}

void addBlockFacts(IO::BlockScan const &scan, Facts *facts)
{
    std::vector<IO::BlockPlace> const &blocks = scan.getBlocks();
    double bytes = 0.0;
    double largest = 0.0;
    double damaged = 0.0;
    double holes = 0.0;
    for (IO::BlockPlace const &block : blocks) {
        bytes += block.size;
        largest = std::max(largest, static_cast<double>(block.size));
        damaged += block.isSound ? 0.0 : 1.0;
        holes += block.isBehindAHole ? 1.0 : 0.0;
    }
    facts->add(QStringLiteral("version"), static_cast<double>(scan.getVersion()));
    facts->add(QStringLiteral("blocks"),
               QJsonObject{{"count", static_cast<double>(blocks.size())}, {"bytes", bytes}, {"largest", largest}});
    if (scan.isSound())
        return;
    QJsonObject told{{"first_at_byte", static_cast<double>(scan.getFirstDamage())},
                     {"damaged_blocks", damaged},
                     {"holes", holes},
                     {"header", scan.hasSoundHeader() ? QStringLiteral("sound") : QStringLiteral("damaged")}};
    facts->add(QStringLiteral("damage"), told);
}

} // namespace Zem::Zemfig
