// Under which names the fields of a file go on: each under one of its own.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "formats/lattice_text.h"

namespace quorbel {
namespace {

const std::string kStart = "N=2 L=1\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=";

/// The link's line in the import of a lattice whose one link has the word "w" and these fields.
std::string lineOf(const std::vector<std::string>& fields) {
  std::string text = kStart + "w";
  for (const std::string& field : fields) text += " " + field;
  const std::string dialect = importOf(text + "\n");
  EXPECT_EQ(importOf(dialect), dialect);  // imported once more it stays the same
  const std::size_t begin = dialect.find("W=<w in='w'");
  return begin == std::string::npos ? dialect : dialect.substr(begin + 11);
}

struct NameCase {
  std::vector<std::string> fields;
  std::string line;
};

TEST(FieldNames, AreDifferentForDifferentFieldsWhateverTheirOrder) {
  const std::vector<NameCase> cases = {
      {{"TOTAL=-1", "x_TOTAL=-2"}, "/> TOTAL=0 x2_TOTAL=-1 x_TOTAL=-2 post=0\n"},
      {{"TOTAL=-1", "x_TOTAL=-2", "x2_TOTAL=-3"},
       "/> TOTAL=0 x2_TOTAL=-3 x3_TOTAL=-1 x_TOTAL=-2 post=0\n"},
      {{"post=-1", "x_post=-2"}, "/> TOTAL=0 x2_post=-1 x_post=-2 post=0\n"},
      {{"unshifted=-1", "x_unshifted=-2"}, "/> TOTAL=0 x2_unshifted=-1 x_unshifted=-2 post=0\n"},
      {{"ABC=-1", "x_ABC=-2"}, "/> TOTAL=0 x2_ABC=-1 x_ABC=-2 post=0\n"},
      {{"L=-1", "x_L=-2"}, "/> TOTAL=0 x2_L=-1 x_L=-2 post=0\n"},
      {{"a:b=-1", "a;b=-2"}, "/> TOTAL=0 a_b=-1 x_a_b=-2 post=0\n"},
      {{"a:b=-1", "a;b=-2", "a_b=-3"}, "/> TOTAL=0 a_b=-3 x2_a_b=-2 x_a_b=-1 post=0\n"},
      {{"in=a", "x_in=b"}, " x2_in='a' x_in='b'/> TOTAL=0 post=0\n"},
      {{"in=a", "out=b", "x_out=c"}, " x_in='a' x2_out='b' x_out='c'/> TOTAL=0 post=0\n"},
      {{"a:b=a", "a;b=b"}, " a_b='a' x_a_b='b'/> TOTAL=0 post=0\n"},
      {{"7=a", "x_7=b"}, " x2_7='a' x_7='b'/> TOTAL=0 post=0\n"},
      {{"a:b=-1", "a;b=b"}, " a_b='b'/> TOTAL=0 a_b=-1 post=0\n"},  // score and text do not clash
      {{"acoustic=-1"}, "/> TOTAL=-1 a=-1 post=0\n"},
  };
  for (const auto& [fields, line] : cases) {
    std::vector<std::string> order = fields;
    std::sort(order.begin(), order.end());
    do {
      const std::string given = lineOf(order);
      const std::string scores = given.substr(given.find("/>"));
      EXPECT_EQ(scores, line.substr(line.find("/>"))) << fields[0];
      // Attributes stay in the order of the file.
      std::string attributes = given.substr(0, given.find("/>"));
      if (order == fields) {
        EXPECT_EQ(attributes, line.substr(0, line.find("/>")));
      }
      for (std::size_t i = 0; i < attributes.size();) {
        const std::size_t end = std::min(attributes.find(' ', i + 1), attributes.size());
        EXPECT_NE(line.find(attributes.substr(i, end - i)), std::string::npos) << attributes;
        i = end;
      }
    } while (std::next_permutation(order.begin(), order.end()));
  }
}

TEST(FieldNames, AreTheSameOnEveryLinkOfAFile) {
  const std::string text =
      "N=2 L=2\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=w TOTAL=-1 a=-1\nJ=1 S=0 E=1 W=w x_TOTAL=-2 a=-2\n";
  const std::string dialect = importOf(text);
  EXPECT_NE(dialect.find("J=0 S=0 E=1 W=<w in='w'/> TOTAL=-1 a=-1 x2_TOTAL=-1 post"),
            std::string::npos)
      << dialect;
  EXPECT_NE(dialect.find("J=1 S=0 E=1 W=<w in='w'/> TOTAL=-2 a=-2 x_TOTAL=-2 post"),
            std::string::npos)
      << dialect;
}

}  // namespace
}  // namespace quorbel
