#include "lattice/reading_rules.h"

#include <unordered_map>

#include "lattice/number_text.h"

namespace quorbel {
namespace {

bool isDecimal(char c) { return c >= '0' && c <= '9'; }

/// What may stand between "start=" and its number.
bool isWhiteSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Takes the integer that follows `prefix` at the beginning of a text; false when there is none.
bool takeInteger(std::string_view text, std::string_view prefix, int& number) {
  if (text.substr(0, prefix.size()) != prefix) return false;
  text.remove_prefix(prefix.size());
  while (!text.empty() && isWhiteSpace(text[0])) text.remove_prefix(1);
  const std::size_t sign = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
  if (text.size() == sign || !isDecimal(text[sign])) return false;
  number = parseInt(text);
  return true;
}

}  // namespace

ReaderKey readerKey(std::string_view key) {
  using Key = ReaderKey;
  static const std::unordered_map<std::string_view, Key> keys = {
      {"VERSION", Key::Header},   {"version", Key::Header},   {"UTTERANCE", Key::Header},
      {"utterance", Key::Header}, {"LMSCALE", Key::Header},   {"lmscale", Key::Header},
      {"WDPENALTY", Key::Header}, {"wdpenalty", Key::Header}, {"CONTEXT", Key::Header},
      {"context", Key::Header},   {"W", Key::Word},           {"WORD", Key::Word},
      {"word", Key::Word},        {"I", Key::NodeIndex},      {"J", Key::LinkId},
      {"t", Key::Time},           {"TIME", Key::Time},        {"time", Key::Time},
      {"S", Key::LinkStart},      {"START", Key::LinkStart},  {"start", Key::LinkStart},
      {"E", Key::LinkEnd},        {"END", Key::LinkEnd},      {"end", Key::LinkEnd},
      {"N", Key::NodeCount},      {"NODES", Key::NodeCount},  {"nodes", Key::NodeCount},
      {"L", Key::LinkCount},      {"LINKS", Key::LinkCount},  {"links", Key::LinkCount}};
  const auto found = keys.find(key);
  return found == keys.end() ? Key::Score : found->second;
}

std::optional<std::size_t> fragmentEnd(std::string_view line, std::size_t pos) {
  const std::size_t lastOpening = line.rfind('<');
  int depth = 0;
  for (; pos < line.size(); ++pos) {
    if (line[pos] == '<')
      ++depth;
    else if (line[pos] == '>')
      --depth;
    else
      continue;
    if (depth == 0 && pos >= lastOpening) return pos + 1;
  }
  if (depth > 0) return std::nullopt;
  return line.size();
}

bool takeEndPoint(std::string_view stretch, EndPoints& points) {
  return takeInteger(stretch, "start=", points.start) || takeInteger(stretch, "end=", points.end);
}

bool namesEndPoint(std::string_view line, std::size_t blanksBefore) {
  EndPoints ignored;
  // A stretch that begins with a blank names nothing.
  const std::size_t rest = blanksBefore % kEndPointStretch;
  for (std::size_t begin = rest == 0 ? 0 : kEndPointStretch - rest; begin < line.size();
       begin += kEndPointStretch)
    if (takeEndPoint(line.substr(begin, kEndPointStretch), ignored)) return true;
  return false;
}

}  // namespace quorbel
