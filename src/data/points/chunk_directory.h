// The directory of a chain: groups of neighbouring chunks, and the root over the groups. Knows where a point stands and keeps
// the figures of a search right when chunks come, go and are split; knows nothing of points that wait.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "data/points/cow_ptr.h"
#include "data/points/point_chunk.h"

namespace tarnwick {

/// Neighbouring chunks with what a search needs of them side by side.
struct ChunkGroup : CowCounted {
  std::unique_ptr<ChunkGroup> Clone() const { return std::make_unique<ChunkGroup>(*this); }
  static constexpr std::size_t kCapacity = 128;

  std::vector<double> first_x;       ///< X of each chunk's first point
  std::vector<std::uint32_t> start;  ///< index of each chunk's first point within the group
  std::vector<CowPtr<PointChunk>> chunks;
  std::uint32_t points = 0;
};

/// All groups, with the same figures one floor up. No group and no chunk is empty.
struct ChunkRoot : CowCounted {
  std::unique_ptr<ChunkRoot> Clone() const { return std::make_unique<ChunkRoot>(*this); }
  std::vector<double> first_x;
  std::vector<std::size_t> start;        ///< index of each group's first point
  std::vector<std::size_t> first_chunk;  ///< number of each group's first chunk
  std::vector<CowPtr<ChunkGroup>> groups;
};

/// A place in a chain; valid until the chain changes. The end is {number of groups, 0, 0}.
struct ChunkPlace {
  std::size_t group = 0;
  std::size_t chunk = 0;
  std::size_t offset = 0;
  bool operator==(const ChunkPlace&) const = default;
};

// --- searching. Where nothing else is said, places are those of points and indices below CountPoints.
inline const PointChunk& ChunkAt(const ChunkRoot& root, const ChunkPlace& place) {
  return *root.groups[place.group]->chunks[place.chunk];
}
std::size_t CountChunks(const ChunkRoot& root);
std::size_t CountPoints(const ChunkRoot& root);
/// Of the first point with X >= x; the end when there is none.
ChunkPlace PlaceNotBelow(const ChunkRoot& root, double x);
/// Of the first point with X > x; the end when there is none.
ChunkPlace PlaceAbove(const ChunkRoot& root, double x);
ChunkPlace PlaceOfPoint(const ChunkRoot& root, std::size_t index);
ChunkPlace PlaceOfChunk(const ChunkRoot& root, std::size_t number);
/// Of the point behind that at `place`, or the end.
ChunkPlace PlaceBehind(const ChunkRoot& root, ChunkPlace place);
/// The index of the point at `place`, or at the end the number of points.
std::size_t IndexOfPlace(const ChunkRoot& root, const ChunkPlace& place);

// --- keeping
PointChunk& EditChunk(ChunkRoot& root, const ChunkPlace& place);
/// The chunk for editing, with room for one more point and, when asked for, for ids.
PointChunk& EditRoomyChunk(ChunkRoot& root, const ChunkPlace& place, IdRoom id_room);
/// Opens a chunk behind all others, whose first X the caller notes.
void AddChunk(ChunkRoot& root, IdRoom id_room);
/// Keeps the first indices behind `place` and the counts right after `change` points came or went in its chunk.
void NotePoints(ChunkRoot& root, const ChunkPlace& place, std::ptrdiff_t change);
/// Keeps the first X right after the first point of the chunk became another.
void NoteFirstX(ChunkRoot& root, const ChunkPlace& place);
/// Cuts a chunk into halves, its group too when that is full.
void SplitChunk(ChunkRoot& root, const ChunkPlace& place);
/// Takes an empty chunk out, and its group when that was the last one in it.
void RemoveChunk(ChunkRoot& root, const ChunkPlace& place);

}  // namespace tarnwick
