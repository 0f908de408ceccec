// OpenFst's own files, as the library writes them and as nobody would.

#include <fst/const-fst.h>
#include <fst/vector-fst.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>

#include "formats/dialect_writer.h"
#include "formats/fst_binary.h"
#include "formats/fst_text.h"
#include "formats/kaldi_archive.h"
#include "formats/lattice_input.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

class FstBinaryTest : public ::testing::Test {
 protected:
  std::string errorOf(const std::string& bytes) {
    m_Folder.write("in.fst", bytes);
    return readWordLattice("in.fst", m_Lattice, m_Options);
  }

  /// The dialect file that the bytes become, or the message.
  std::string importOf(const std::string& bytes) {
    std::string text = errorOf(bytes);
    if (text.empty()) text = dialectText(m_Lattice, text);
    if (text.empty()) dialectText(m_Lattice, text);
    return text;
  }

  TemporaryFolder m_Folder;
  ReadingOptions m_Options;
  WordLattice m_Lattice;
};

template <typename Arc>
fst::VectorFst<Arc> sampleGraph() {
  using Weight = typename Arc::Weight;
  fst::VectorFst<Arc> graph;
  for (int state = 0; state < 4; ++state) graph.AddState();
  graph.SetStart(1);
  graph.AddArc(1, Arc(7, 1, Weight(0.1F), 0));
  graph.AddArc(1, Arc(8, 0, Weight(1.5F), 2));
  graph.AddArc(0, Arc(9, 2, Weight::One(), 2));
  graph.AddArc(0, Arc(9, 2, Weight::Zero(), 3));
  graph.SetFinal(2, Weight(0.7F));
  return graph;
}

fst::SymbolTable sampleTable(bool isOutput) {
  fst::SymbolTable table("table");
  table.AddSymbol("<eps>", 0);
  for (int number = 1; number < 10; ++number)
    table.AddSymbol((isOutput ? "out" : "in") + std::to_string(number), number);
  return table;
}

template <typename Fst>
std::string bytesOf(const Fst& graph, bool isAligned = false) {
  std::ostringstream stream;
  fst::FstWriteOptions options("test");
  options.align = isAligned;
  EXPECT_TRUE(graph.Write(stream, options));
  return stream.str();
}

std::string sampleBytes() {
  fst::VectorFst<fst::StdArc> graph = sampleGraph<fst::StdArc>();
  const fst::SymbolTable table = sampleTable(true);
  graph.SetOutputSymbols(&table);
  return bytesOf(graph);
}

std::string imported(const std::string& good, const std::string& day) {
  return "VERSION=1.1\nN=5 L=5\n"
         "I=0 t=0\nI=1 t=1\nI=2 t=2\nI=3 t=2\nI=4 t=3\n"
         "J=2 S=0 E=1 W=<w in='" +
         good +
         "'/> TOTAL=-0.1 post=-0.220417\n"
         "J=3 S=0 E=2 W=<w in='!NULL'/> TOTAL=-1.5 post=-1.620417\n"
         "J=0 S=1 E=2 W=<w in='" +
         day +
         "'/> TOTAL=0 post=-0.220417\n"
         "J=1 S=1 E=3 W=<w in='" +
         day +
         "'/> TOTAL=-1e+06 post=-1e+06\n"
         "J=4 S=2 E=4 W=<w in='!NULL'/> TOTAL=-0.7 post=0\n";
}

TEST_F(FstBinaryTest, OfEveryKindThatIsReadAreTheSame) {
  const auto compare = [&](const auto& vector) {
    using Arc = typename std::decay_t<decltype(vector)>::Arc;
    const fst::ConstFst<Arc> constant(vector);
    for (const std::string& bytes :
         {bytesOf(vector), bytesOf(vector, true), bytesOf(constant), bytesOf(constant, true)})
      EXPECT_EQ(importOf(bytes), imported("1", "2")) << Arc::Type();
  };
  compare(sampleGraph<fst::StdArc>());
  compare(sampleGraph<fst::LogArc>());
}

TEST_F(FstBinaryTest, HasItsWordsInside) {
  fst::VectorFst<fst::StdArc> graph = sampleGraph<fst::StdArc>();
  const fst::SymbolTable in = sampleTable(false);
  const fst::SymbolTable out = sampleTable(true);
  graph.SetInputSymbols(&in);
  EXPECT_EQ(importOf(bytesOf(graph)), imported("1", "2"));
  EXPECT_EQ(m_Lattice.notes.size(), 1U);
  graph.SetOutputSymbols(&out);
  EXPECT_EQ(importOf(bytesOf(graph)), imported("out1", "out2"));
  EXPECT_EQ(m_Lattice.notes.size(), 0U);
  graph.SetInputSymbols(nullptr);
  EXPECT_EQ(importOf(bytesOf(graph)), imported("out1", "out2"));
  m_Folder.write("words.txt", "good 1\nday 2\n");
  m_Options.words = std::make_shared<WordTable>("words.txt");
  EXPECT_EQ(importOf(bytesOf(graph)), imported("good", "day"));
  m_Folder.write("words.txt", "good 1\n");
  m_Options.words = std::make_shared<WordTable>("words.txt");
  EXPECT_EQ(errorOf(bytesOf(graph)), "in.fst: the number 2 has no word in words.txt");
}

TEST_F(FstBinaryTest, WithOneLabelAnArcAndOneTableHasTheWordsOfThat) {
  fst::VectorFst<fst::StdArc> graph;
  graph.AddState();
  graph.AddState();
  graph.SetStart(0);
  graph.AddArc(0, fst::StdArc(3, 3, 0.5F, 1));
  graph.SetFinal(1, 0.0F);
  const fst::SymbolTable in = sampleTable(false);
  graph.SetInputSymbols(&in);
  EXPECT_EQ(importOf(bytesOf(graph)),
            "VERSION=1.1\nN=2 L=1\nI=0 t=0\nI=1 t=1\n"
            "J=0 S=0 E=1 W=<w in='in3'/> TOTAL=-0.5 post=0\n");
}

/// The sample with the number at a place of its head replaced.
template <typename Number>
std::string withNumber(std::size_t place, Number number) {
  std::string bytes = sampleBytes();
  std::memcpy(&bytes[place], &number, sizeof number);
  return bytes;
}

// Where things stand in the sample: magic, "vector", "standard", and then
constexpr std::size_t kPlaceOfType = 4;
constexpr std::size_t kPlaceOfVersion = 4 + 10 + 12;
constexpr std::size_t kPlaceOfStart = kPlaceOfVersion + 16;
constexpr std::size_t kPlaceOfStates = kPlaceOfStart + 8;
constexpr std::size_t kPlaceOfTable = kPlaceOfStates + 16;

TEST_F(FstBinaryTest, SaysWhatIsWrong) {
  const std::string bytes = sampleBytes();
  const std::string size = std::to_string(bytes.size());
  EXPECT_EQ(errorOf(bytes), "");
  EXPECT_EQ(errorOf(withNumber<std::int32_t>(kPlaceOfType, 1 << 30)),
            "in.fst: the file ends too early, after " + size + " bytes");
  EXPECT_EQ(errorOf(withNumber<std::int32_t>(kPlaceOfVersion, 1)),
            "in.fst: version 1 of the type vector, where 2 was expected");
  EXPECT_EQ(errorOf(withNumber<std::int64_t>(kPlaceOfStart, -1)),
            "in.fst: an automaton without a start");
  EXPECT_EQ(errorOf(withNumber<std::int64_t>(kPlaceOfStart, 4)),
            "in.fst: a start or an arc leads to state 4, but there are 4");
  EXPECT_EQ(errorOf(withNumber<std::int64_t>(kPlaceOfStates, std::int64_t{1} << 40)),
            "in.fst: states are said to be 1099511627776 in a file of " + size + " bytes");
  EXPECT_EQ(errorOf(withNumber<std::int32_t>(kPlaceOfTable, 7)),
            "in.fst: byte " + std::to_string(kPlaceOfTable + 4) +
                ": no table of symbols, which was expected there");
  std::string other = bytes;
  other.replace(kPlaceOfType + 4, 6, "string");
  EXPECT_EQ(errorOf(other),
            "in.fst: an automaton of type \"string\", where vector or const was expected "
            "(fstconvert --fst_type=vector makes it so)");
  other = bytes;
  other.replace(kPlaceOfType + 14, 8, "gallic__");
  EXPECT_EQ(errorOf(other),
            "in.fst: arcs of type \"gallic__\", where standard, log or log64 was expected");
  const std::size_t arcs = bytes.size() - 4 * 12 - 4 * 16 + 4;  // how many the first state has
  EXPECT_EQ(errorOf(withNumber<std::int64_t>(arcs, std::int64_t{1} << 60)),
            "in.fst: byte " + std::to_string(arcs + 8) +
                ": arcs of state 0 are said to be 1152921504606846976, but the file has " + size +
                " bytes");
  EXPECT_EQ(errorOf(withNumber<std::int32_t>(arcs + 8 + 12, -1)),
            "in.fst: byte " + std::to_string(arcs + 8 + 12) + ": an arc leads to no state");
  EXPECT_EQ(errorOf(withNumber<std::int32_t>(arcs + 8 + 12, 3)), "");
  EXPECT_EQ(errorOf(withNumber<std::int32_t>(arcs + 8 + 12, 4)),
            "in.fst: a start or an arc leads to state 4, but there are 4");
  EXPECT_EQ(errorOf(withNumber<std::uint32_t>(arcs + 8 + 8, 0x7FC00000)),
            "in.fst: the cost of an arc of state 0 is no number");
}

TEST_F(FstBinaryTest, CountsArcsOfStatesThatLieInARow) {
  const fst::ConstFst<fst::StdArc> graph(sampleGraph<fst::StdArc>());
  std::string bytes = bytesOf(graph);
  const std::size_t firstState = bytes.size() - 4 * 16 - 4 * 20;
  const std::uint32_t none = 0;
  std::memcpy(&bytes[firstState + 20 + 4], &none, sizeof none);  // the place of the second's arcs
  EXPECT_EQ(errorOf(bytes), "in.fst: byte " + std::to_string(firstState + 20 + 4) +
                                ": arcs of state 1 begin with number 0, where 2 was expected");
  bytes = bytesOf(graph);
  const std::uint32_t many = 1000000000;
  std::memcpy(&bytes[firstState + 3 * 20 + 8], &many, sizeof many);
  EXPECT_EQ(errorOf(bytes), "in.fst: arcs are said to be 4, but states have 1000000004");
  bytes = bytesOf(graph);
  const std::int32_t target = 4;
  std::memcpy(&bytes[bytes.size() - 4], &target, sizeof target);
  EXPECT_EQ(errorOf(bytes), "in.fst: a start or an arc leads to state 4, but there are 4");
}

TEST(ManyArcs, AreRefusedInEveryFormat) {
  const std::string beyond = "more than 4000000 arcs and final states, which is beyond any lattice";
  const TemporaryFolder folder;
  Automaton automaton;
  automaton.arcs.reserve(4000001);
  const auto haveArcs = [&](std::size_t count) {
    automaton.arcs.resize(count);
    automaton.finals.clear();
  };
  haveArcs(3999998);
  EXPECT_EQ(parseFstText("0 1 a\n1\n", automaton), "");
  haveArcs(3999999);
  EXPECT_EQ(parseFstText("0 1 a\n1\n", automaton), "line 2: " + beyond);
  haveArcs(3999999);
  folder.write("in.lat", "u\n0 1 a\n1\n\n");
  InputFile file;
  ASSERT_EQ(file.open("in.lat"), "");
  KaldiArchive archive(file);
  std::string name;
  std::string error;
  ASSERT_TRUE(archive.nextName(name, error));
  EXPECT_EQ(archive.read(automaton), "line 3: " + beyond);
  haveArcs(3999995);  // the sample has four arcs and a final state
  EXPECT_EQ(readFstBinary(sampleBytes(), automaton), "");
  haveArcs(3999996);
  EXPECT_EQ(readFstBinary(sampleBytes(), automaton), beyond);
}

/// Whatever is wrong is a message or a lattice, and the library prints nothing.
TEST_F(FstBinaryTest, NeedsNoTrust) {
  fst::VectorFst<fst::StdArc> graph = sampleGraph<fst::StdArc>();
  const fst::SymbolTable table = sampleTable(true);
  graph.SetOutputSymbols(&table);
  const fst::ConstFst<fst::StdArc> constant(graph);
  ::testing::internal::CaptureStderr();
  int refused = 0;
  for (const std::string& whole : {bytesOf(graph), bytesOf(constant), bytesOf(constant, true)}) {
    for (std::size_t place = 0; place < whole.size(); ++place) {
      Automaton cut;
      EXPECT_NE(readFstBinary(whole.substr(0, place), cut), "") << place;
      for (const int change : {0x01, 0x7F, 0x80, 0xFF}) {
        std::string bytes = whole;
        bytes[place] = static_cast<char>(bytes[place] ^ change);
        Automaton automaton;
        WordLattice lattice;
        std::string error = readFstBinary(bytes, automaton);
        if (error.empty()) error = latticeOf(automaton, m_Options, lattice);
        if (!error.empty()) ++refused;
      }
    }
  }
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_GT(refused, 1000);
}

}  // namespace
}  // namespace quorbel
