#include "formats/lattice_input.h"

#include <utility>

#include "formats/automaton.h"
#include "formats/fst_binary.h"
#include "formats/fst_text.h"
#include "formats/kaldi_archive.h"
#include "formats/normalise.h"
#include "formats/slf_file.h"
#include "words/word_text.h"

namespace quorbel {

LatticeInput::LatticeInput(std::string path, ReadingOptions options)
    : m_Path(std::move(path)), m_Options(std::move(options)) {}

LatticeInput::~LatticeInput() = default;

bool LatticeInput::next(WordLattice& lattice) {
  if (m_IsAtEnd) return false;
  lattice = WordLattice();
  std::string error = begin();
  if (error.empty()) error = m_Archive ? readArchive(lattice) : readWhole(lattice);
  if (!error.empty()) return fail(error);
  if (lattice.nodes.empty()) {
    m_IsAtEnd = true;
    if (m_IsFound) return false;
    m_IsWithoutUtterance = m_Options.utterance.has_value();
    return fail(m_Options.utterance
                    ? "no utterance \"" + drawableText(*m_Options.utterance) + "\" in it"
                    : "no utterance in it");
  }
  chooseScales(lattice, m_Options.scales);
  m_IsFound = true;
  m_IsAtEnd = !m_Archive;
  return true;
}

bool LatticeInput::goOn() {
  if (!std::exchange(m_CanGoOn, false)) return false;
  m_IsAtEnd = false;
  m_IsFound = true;  // of the file, for it is no empty one
  m_Error.clear();
  return true;
}

bool LatticeInput::isLast() { return !m_Archive || m_Archive->isLast(); }

bool LatticeInput::skipRest() {
  std::string name;
  std::string error = m_Error.empty() ? begin() : "";
  while (m_Archive && error.empty() && nextName(name, error)) continue;
  return error.empty() ? m_Error.empty() : fail(error);
}

std::optional<std::string> LatticeInput::takePlainText() {
  return std::exchange(m_PlainText, std::nullopt);
}

/// Says why there is no lattice. Returns false.
bool LatticeInput::fail(const std::string& error) {
  m_IsAtEnd = true;
  m_Error = (m_Path == "-" ? "standard input" : m_Path) + ": " + error;
  return false;
}

/// Opens the file, unless it is open, and finds out what it is.
std::string LatticeInput::begin() {
  if (std::exchange(m_IsBegun, true)) return "";
  std::string error = m_File.open(m_Path);
  std::string_view beginning;
  if (error.empty()) error = m_File.peek(beginning);
  if (!error.empty()) return error;
  m_Format = formatOf(beginning);
  if (m_Format == InputFormat::KaldiBinary)
    return "a binary archive of Kaldi's; write it as text: lattice-copy ark:FILE ark,t:-";
  if (m_Format == InputFormat::KaldiText) m_Archive = std::make_unique<KaldiArchive>(m_File);
  return "";
}

bool LatticeInput::isWanted(const std::string& name) const {
  return !m_Options.utterance || name == *m_Options.utterance;
}

bool LatticeInput::nextName(std::string& name, std::string& error) {
  if (!m_Archive->nextName(name, error)) return false;
  name = inUtf8(std::move(name));
  m_NameBytes += name.size() + 1;
  m_Names.push_back(name);
  if (m_NameBytes > kMostBytes) error = "more than 256 MiB of names, which is beyond any archive";
  return error.empty();
}

/// Reads the next lattice that is wanted; leaves `lattice` empty where none follows.
std::string LatticeInput::readArchive(WordLattice& lattice) {
  Automaton automaton;
  std::string error;
  do {
    if (!nextName(automaton.name, error)) return error;
  } while (!isWanted(automaton.name));
  error = m_Archive->read(automaton);
  if (error.empty()) error = latticeOf(automaton, m_Options, lattice);
  m_CanGoOn = !error.empty();
  return error;
}

/// The same of a file that has one lattice.
std::string LatticeInput::readWhole(WordLattice& lattice) {
  SlfFile file;
  std::string error = m_File.readRest(file.bytes);
  if (!error.empty()) return error;
  error = m_Format == InputFormat::Slf ? readSlf(file, lattice) : readFst(file.bytes, lattice);
  if (error.empty() && !isWanted(lattice.utterance)) lattice = WordLattice();
  return error;
}

std::string LatticeInput::readSlf(SlfFile& file, WordLattice& lattice) {
  std::string error = parseSlf(file);
  if (error.empty()) error = normalise(file, lattice);
  if (!m_File.isCompressed()) m_PlainText = std::move(file.bytes);
  return error;
}

std::string LatticeInput::readFst(const std::string& bytes, WordLattice& lattice) const {
  Automaton automaton;
  std::string error = m_Format == InputFormat::OpenFstBinary ? readFstBinary(bytes, automaton)
                                                             : parseFstText(bytes, automaton);
  return error.empty() ? latticeOf(automaton, m_Options, lattice) : error;
}

std::string readWordLattice(const std::string& path, WordLattice& lattice,
                            const ReadingOptions& options) {
  LatticeInput input(path, options);
  input.next(lattice);
  return input.error();
}

}  // namespace quorbel
