#include "figqt_deflate.h"

#include "figqt_share_work.h"

#include <zlib.h>

#include <algorithm>
#include <new>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t PIECE = 1U << 18U;
constexpr std::size_t WINDOW = 1U << 15U; // how far back deflate looks
constexpr int RAW = -15;                  // no head and no check: those are for all pieces together
constexpr int MEMORY = 8;
constexpr std::size_t FLUSH_BYTES = 16; // what the end of a piece may take besides
constexpr std::string_view HEAD("\x78\x5e", 2);

struct Piece
{
    std::string_view before;
    std::string_view bytes;
    bool last = false;
    std::string packed;
    bool done = false;
};

Bytef *bytesOf(std::string_view bytes)
{
    return reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
}

std::vector<Piece> cut(std::string_view bytes)
{
    std::vector<Piece> pieces(std::max<std::size_t>(1, (bytes.size() + PIECE - 1) / PIECE));
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        std::size_t const begin = i * PIECE;
        std::size_t const known = std::min(begin, WINDOW);
        pieces[i].before = bytes.substr(begin - known, known);
        pieces[i].bytes = bytes.substr(begin, PIECE);
        pieces[i].last = i + 1 == pieces.size();
        pieces[i].packed.resize(compressBound(static_cast<uLong>(pieces[i].bytes.size())) + FLUSH_BYTES);
    }
    return pieces;
}

/// Leaves `done` as it is when there is no memory.
void pack(Piece *piece, int level)
{
    z_stream stream{};
    if (deflateInit2(&stream, level, Z_DEFLATED, RAW, MEMORY, Z_DEFAULT_STRATEGY) != Z_OK)
        return;
    if (!piece->before.empty())
        deflateSetDictionary(&stream, bytesOf(piece->before), static_cast<uInt>(piece->before.size()));
    stream.next_in = bytesOf(piece->bytes);
    stream.avail_in = static_cast<uInt>(piece->bytes.size());
    stream.next_out = bytesOf(piece->packed);
    stream.avail_out = static_cast<uInt>(piece->packed.size());
    int const status = deflate(&stream, piece->last ? Z_FINISH : Z_SYNC_FLUSH);
    piece->done = status == (piece->last ? Z_STREAM_END : Z_OK) && stream.avail_in == 0 && stream.avail_out > 0;
    piece->packed.resize(stream.total_out);
    deflateEnd(&stream);
}

} // namespace

std::string deflated(std::string_view bytes, int level)
{
    std::vector<Piece> pieces = cut(bytes);
    Pieces numbers(pieces.size());
    shareWork(pieces.size(), [&pieces, &numbers, level] {
        for (std::size_t i = 0; numbers.take(&i);)
            pack(&pieces[i], level);
    });
    std::string result(HEAD);
    for (Piece const &piece : pieces) {
        if (!piece.done)
            throw std::bad_alloc();
        result += piece.packed;
    }
    auto const check = adler32_z(adler32(0, nullptr, 0), bytesOf(bytes), bytes.size());
    for (int shift = 24; shift >= 0; shift -= 8)
        result.push_back(static_cast<char>(check >> shift & 0xffU));
    return result;
}

} // namespace Zem::Fig2Qt
