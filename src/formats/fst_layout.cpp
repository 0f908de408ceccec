#include "formats/fst_layout.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#include "words/word_text.h"

namespace quorbel {
namespace {

constexpr std::int32_t kFileMagic = 2125659606;
constexpr std::int32_t kTableMagic = 2125658996;
constexpr std::uint32_t kHasInputTable = 1;
constexpr std::uint32_t kHasOutputTable = 2;
constexpr std::uint32_t kIsAligned = 4;
constexpr std::int64_t kNotCounted = -1;
constexpr std::size_t kAlignment = 16;

/// What stands at the beginning of a file.
struct FstHead {
  std::string type;
  std::string arcType;
  std::int32_t version = 0;
  std::uint32_t flags = 0;
  std::uint64_t properties = 0;
  std::int64_t start = 0;
  std::int64_t states = 0;
  std::int64_t arcs = 0;
};

std::string atByte(std::size_t place, const std::string& what) {
  return "byte " + std::to_string(place) + ": " + what;
}

/// Goes through the bytes of one file.
class FstWalk {
 public:
  explicit FstWalk(std::string_view bytes) : m_Bytes(bytes) {}

  std::string check(FstArcs& arcs);

 private:
  std::string checkHead(FstArcs& arcs);
  std::string checkTable();
  std::string checkVector();
  std::string checkVectorArcs(std::int64_t state);
  std::string checkConst();
  std::string checkTarget(std::size_t place);
  std::string ends() const { return "the file ends too early, after " + sizeText() + " bytes"; }
  std::string sizeText() const { return std::to_string(m_Bytes.size()); }
  std::string at(const std::string& what) const { return atByte(m_Pos, what); }

  std::size_t left() const { return m_Bytes.size() - m_Pos; }

  template <typename Number>
  bool take(Number& number) {
    if (left() < sizeof number) return false;
    std::memcpy(&number, m_Bytes.data() + m_Pos, sizeof number);
    m_Pos += sizeof number;
    return true;
  }

  bool takeText(std::string& text) {
    std::int32_t size = 0;
    if (!take(size) || size < 0 || left() < static_cast<std::size_t>(size)) return false;
    text = m_Bytes.substr(m_Pos, static_cast<std::size_t>(size));
    m_Pos += text.size();
    return true;
  }

  bool align() {
    const std::size_t over = m_Pos % kAlignment;
    if (!(m_Head.version == 1 || (m_Head.flags & kIsAligned) != 0) || over == 0) return true;
    if (left() < kAlignment - over) return false;
    m_Pos += kAlignment - over;
    return true;
  }

  const std::string_view m_Bytes;
  std::size_t m_Pos = 0;
  FstHead m_Head;
  std::size_t m_CostSize = 0;
  std::int64_t m_HighestTarget = -1;
};

std::string FstWalk::check(FstArcs& arcs) {
  std::string error = checkHead(arcs);
  if (error.empty() && (m_Head.flags & kHasInputTable) != 0) error = checkTable();
  if (error.empty() && (m_Head.flags & kHasOutputTable) != 0) error = checkTable();
  if (!error.empty()) return error;
  return m_Head.type == "const" ? checkConst() : checkVector();
}

std::string FstWalk::checkHead(FstArcs& arcs) {
  std::int32_t magic = 0;
  const bool isWhole = take(magic) && takeText(m_Head.type) && takeText(m_Head.arcType) &&
                       take(m_Head.version) && take(m_Head.flags) && take(m_Head.properties) &&
                       take(m_Head.start) && take(m_Head.states) && take(m_Head.arcs);
  if (!isWhole) return ends();
  if (magic != kFileMagic) return "no file of OpenFst's";
  const bool isConst = m_Head.type == "const";
  if (!isConst && m_Head.type != "vector")
    return "an automaton of type \"" + excerpt(inUtf8(m_Head.type)) +
           "\", where vector or const was expected (fstconvert --fst_type=vector makes it so)";
  if (m_Head.arcType == "standard")
    arcs = FstArcs::Tropical;
  else if (m_Head.arcType == "log")
    arcs = FstArcs::Log;
  else if (m_Head.arcType == "log64")
    arcs = FstArcs::Log64;
  else
    return "arcs of type \"" + excerpt(inUtf8(m_Head.arcType)) +
           "\", where standard, log or log64 was expected";
  m_CostSize = arcs == FstArcs::Log64 ? sizeof(double) : sizeof(float);
  const std::int32_t oldest = isConst ? 1 : 2;
  if (m_Head.version < oldest || m_Head.version > 2)
    return "version " + std::to_string(m_Head.version) + " of the type " + m_Head.type +
           ", where 2 was expected";
  if (m_Head.start < 0) return "an automaton without a start";
  constexpr std::int64_t kMostStates = std::numeric_limits<std::int32_t>::max();
  const bool isCounted = isConst || m_Head.states != kNotCounted;
  if (isCounted && (m_Head.states < 0 || m_Head.states > kMostStates ||
                    static_cast<std::size_t>(m_Head.states) > left()))
    return "states are said to be " + std::to_string(m_Head.states) + " in a file of " +
           sizeText() + " bytes";
  return "";
}

std::string FstWalk::checkTable() {
  std::int32_t magic = 0;
  std::string text;
  std::int64_t next = 0;
  std::int64_t count = 0;
  if (!take(magic)) return ends();
  if (magic != kTableMagic) return at("no table of symbols, which was expected there");
  if (!takeText(text) || !take(next) || !take(count)) return ends();
  for (std::int64_t i = 0; i < count; ++i) {
    std::int64_t number = 0;
    if (!takeText(text) || !take(number)) return ends();
  }
  return "";
}

/// Each state with its final cost and its arcs, one after the other.
std::string FstWalk::checkVector() {
  std::int64_t states = 0;
  for (; m_Head.states == kNotCounted || states < m_Head.states; ++states) {
    if (m_Head.states == kNotCounted && left() < m_CostSize) break;
    if (left() < m_CostSize) return ends();
    m_Pos += m_CostSize;
    if (std::string error = checkVectorArcs(states); !error.empty()) return error;
  }
  if (m_Head.start >= states || m_HighestTarget >= states)
    return "a start or an arc leads to state " +
           std::to_string(std::max(m_Head.start, m_HighestTarget)) + ", but there are " +
           std::to_string(states);
  return "";
}

std::string FstWalk::checkVectorArcs(std::int64_t state) {
  const std::size_t size = 3 * sizeof(std::int32_t) + m_CostSize;
  std::int64_t count = 0;
  if (!take(count)) return ends();
  if (count < 0 || static_cast<std::size_t>(count) > left() / size)
    return at("arcs of state " + std::to_string(state) + " are said to be " +
              std::to_string(count) + ", but the file has " + sizeText() + " bytes");
  for (std::int64_t i = 0; i < count; ++i, m_Pos += size)
    if (std::string error = checkTarget(m_Pos + size - sizeof(std::int32_t)); !error.empty())
      return error;
  return "";
}

/// All states in a row, each with the place of its arcs, and then all arcs, as they lie in memory.
std::string FstWalk::checkConst() {
  const std::size_t stateSize = m_CostSize + 4 * sizeof(std::uint32_t);
  const std::size_t arcSize = m_CostSize == sizeof(double) ? 24 : 16;
  const std::size_t states = static_cast<std::size_t>(m_Head.states);
  if (!align() || left() / stateSize < states) return ends();
  std::uint64_t arcs = 0;
  for (std::size_t i = 0; i < states; ++i) {
    m_Pos += m_CostSize;
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    std::uint32_t ignored = 0;
    const std::size_t place = m_Pos;
    take(first);
    take(count);
    if (first != arcs)
      return atByte(place, "arcs of state " + std::to_string(i) + " begin with number " +
                               std::to_string(first) + ", where " + std::to_string(arcs) +
                               " was expected");
    arcs += count;
    take(ignored);
    take(ignored);
  }
  if (m_Head.arcs < 0 || arcs != static_cast<std::uint64_t>(m_Head.arcs))
    return "arcs are said to be " + std::to_string(m_Head.arcs) + ", but states have " +
           std::to_string(arcs);
  if (!align() || left() / arcSize < arcs) return ends();
  for (std::uint64_t i = 0; i < arcs; ++i, m_Pos += arcSize) {
    const std::size_t target = m_Pos + 2 * sizeof(std::int32_t) + m_CostSize;
    if (std::string error = checkTarget(target); !error.empty()) return error;
  }
  if (m_Head.start >= m_Head.states || m_HighestTarget >= m_Head.states)
    return "a start or an arc leads to state " +
           std::to_string(std::max(m_Head.start, m_HighestTarget)) + ", but there are " +
           std::to_string(states);
  return "";
}

/// The state that an arc leads to stands at `place`.
std::string FstWalk::checkTarget(std::size_t place) {
  std::int32_t target = 0;
  std::memcpy(&target, m_Bytes.data() + place, sizeof target);
  if (target < 0) return atByte(place, "an arc leads to no state");
  m_HighestTarget = std::max<std::int64_t>(m_HighestTarget, target);
  return "";
}

}  // namespace

std::string checkFstLayout(std::string_view bytes, FstArcs& arcs) {
  return FstWalk(bytes).check(arcs);
}

}  // namespace quorbel
