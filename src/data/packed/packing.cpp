#include "data/packed/packing.h"

#include <bzlib.h>
#include <lzma.h>
#include <zlib.h>
#include <zstd.h>
#include <zstd_errors.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <new>

namespace tarnwick {
namespace {

using namespace std::string_view_literals;

constexpr int kGzipOnly = 16 + MAX_WBITS;  // with the header, the length and the checksum of gzip
constexpr std::uint64_t kMostMemory = std::uint64_t{kMostUnpackingMegabytes} << 20;

/// What zlib, bzip2 and liblzma have in common: a struct that is told where to read and where to write.
template <class Stream>
class StreamDecoder : public Decoder {
 public:
  Unpacked Decode(std::string_view& packed, std::span<char>& room) final {
    stream_.next_in = reinterpret_cast<decltype(stream_.next_in)>(const_cast<char*>(packed.data()));
    stream_.avail_in = static_cast<decltype(stream_.avail_in)>(packed.size());
    stream_.next_out = reinterpret_cast<decltype(stream_.next_out)>(room.data());
    stream_.avail_out = static_cast<decltype(stream_.avail_out)>(room.size());
    const Unpacked result = Step();
    packed.remove_prefix(packed.size() - stream_.avail_in);
    room = room.last(stream_.avail_out);
    return result;
  }

 protected:
  virtual Unpacked Step() = 0;
  Stream& Of() { return stream_; }

 private:
  Stream stream_{};
};

class GzipDecoder final : public StreamDecoder<z_stream> {
 public:
  GzipDecoder() {
    if (inflateInit2(&Of(), kGzipOnly) != Z_OK) throw std::bad_alloc();
  }
  ~GzipDecoder() override { inflateEnd(&Of()); }

 private:
  Unpacked Step() override {
    switch (inflate(&Of(), Z_NO_FLUSH)) {
      case Z_OK:
      case Z_BUF_ERROR:
        return Unpacked::Going;
      case Z_STREAM_END:
        return Unpacked::MemberEnd;
      case Z_MEM_ERROR:
        throw std::bad_alloc();
      default:
        return Unpacked::Damaged;
    }
  }
};

class Bzip2Decoder final : public StreamDecoder<bz_stream> {
 public:
  Bzip2Decoder() {
    if (BZ2_bzDecompressInit(&Of(), 0, 0) != BZ_OK) throw std::bad_alloc();
  }
  ~Bzip2Decoder() override { BZ2_bzDecompressEnd(&Of()); }

 private:
  Unpacked Step() override {
    switch (BZ2_bzDecompress(&Of())) {
      case BZ_OK:
        return Unpacked::Going;
      case BZ_STREAM_END:
        return Unpacked::MemberEnd;
      case BZ_MEM_ERROR:
        throw std::bad_alloc();
      default:
        return Unpacked::Damaged;
    }
  }
};

class XzDecoder final : public StreamDecoder<lzma_stream> {
 public:
  XzDecoder() {
    if (lzma_stream_decoder(&Of(), kMostMemory, 0) != LZMA_OK) throw std::bad_alloc();
  }
  ~XzDecoder() override { lzma_end(&Of()); }

 private:
  Unpacked Step() override {
    switch (lzma_code(&Of(), LZMA_RUN)) {
      case LZMA_OK:
      case LZMA_BUF_ERROR:
        return Unpacked::Going;
      case LZMA_STREAM_END:
        return Unpacked::MemberEnd;
      case LZMA_MEMLIMIT_ERROR:
        return Unpacked::TooMuchMemory;
      case LZMA_MEM_ERROR:
        throw std::bad_alloc();
      default:
        return Unpacked::Damaged;
    }
  }
};

class ZstdDecoder final : public Decoder {
 public:
  ZstdDecoder() : context_(ZSTD_createDCtx()) {
    if (context_ == nullptr) throw std::bad_alloc();
    ZSTD_DCtx_setParameter(context_.get(), ZSTD_d_windowLogMax, std::bit_width(kMostMemory) - 1);
  }

  Unpacked Decode(std::string_view& packed, std::span<char>& room) override {
    ZSTD_inBuffer in{packed.data(), packed.size(), 0};
    ZSTD_outBuffer out{room.data(), room.size(), 0};
    const std::size_t result = ZSTD_decompressStream(context_.get(), &out, &in);
    packed.remove_prefix(in.pos);
    room = room.subspan(out.pos);
    if (result == 0) return Unpacked::MemberEnd;
    if (!ZSTD_isError(result)) return Unpacked::Going;
    switch (ZSTD_getErrorCode(result)) {
      case ZSTD_error_frameParameter_windowTooLarge:
        return Unpacked::TooMuchMemory;
      case ZSTD_error_memory_allocation:
        throw std::bad_alloc();
      default:
        return Unpacked::Damaged;
    }
  }

 private:
  struct Free {
    void operator()(ZSTD_DCtx* context) const { ZSTD_freeDCtx(context); }
  };
  std::unique_ptr<ZSTD_DCtx, Free> context_;
};

bool IsGzip(std::string_view bytes) {
  return bytes.starts_with("\x1F\x8B");
}

/// The mark of four letters could begin a text: that of a block stands behind it. Half of either does, so that a damaged
/// file is still told to be one.
bool IsBzip2(std::string_view bytes) {
  if (bytes.size() < 10) return false;
  const std::string_view block = bytes.substr(4, 6);
  if (block == "1AY&SY" || block == "\x17rE8P\x90") return true;
  return bytes.starts_with("BZh") && (block.starts_with("1AY") || block.ends_with("&SY"));
}

bool IsXz(std::string_view bytes) {
  return bytes.starts_with(
      "\xFD"
      "7zXZ\0"sv);
}

/// A frame of data, or one that is passed over: tables that tools for many processors put there.
bool IsZstd(std::string_view bytes) {
  const bool passed_over = bytes.size() >= 4 && bytes.substr(1, 3) == "\x2A\x4D\x18" &&
                           (static_cast<unsigned char>(bytes[0]) & 0xF0) == 0x50;
  return passed_over || bytes.starts_with("\x28\xB5\x2F\xFD");
}

template <class Kind>
std::unique_ptr<Decoder> Make() {
  return std::make_unique<Kind>();
}

constexpr Packing kPackings[] = {
    {"gzip", &IsGzip, &Make<GzipDecoder>},
    {"bzip2", &IsBzip2, &Make<Bzip2Decoder>},
    {"xz", &IsXz, &Make<XzDecoder>},
    {"zstd", &IsZstd, &Make<ZstdDecoder>},
};

}  // namespace

const Packing* PackingOf(std::string_view bytes) {
  const auto* const found = std::ranges::find_if(
      kPackings, [bytes](const Packing& packing) { return packing.recognises(bytes); });
  return found == std::end(kPackings) ? nullptr : found;
}

}  // namespace tarnwick
