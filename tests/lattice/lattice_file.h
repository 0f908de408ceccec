#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "graph_text.h"
#include "lattice/htk_reader.h"
#include "temporary_folder.h"

namespace quorbel {

/// Lattice files made of text and read into one graph. They are called "talk.lat", which is what
/// messages begin with.
class LatticeFile : public ::testing::Test {
 protected:
  LatticeFile() { currentScoreName = "before"; }

  /// Reads a file of this text into `graph` and returns the message. Into a fresh graph the
  /// text itself must read the same.
  std::string read(const std::string& text) {
    m_Folder.write("talk.lat", text);
    const std::string nameBefore = currentScoreName;
    Graph ofText;
    ofText.scoresNegated = graph.scoresNegated;
    const std::string messageOfText = readHtkLattice(ofText, "talk.lat", text);
    const std::string nameOfText = std::exchange(currentScoreName, nameBefore);
    const bool isFresh = !graph.adjacency;
    const std::string message = readHtkLattice(graph, "talk.lat");
    if (isFresh) {  // else it may be a lattice from before that is written to
      EXPECT_EQ(message, messageOfText);
      EXPECT_EQ(currentScoreName, nameOfText);
      EXPECT_EQ(describeLattice(graph), describeLattice(ofText));
    }
    return message;
  }

  /// Reads a file of this text into a fresh graph and returns the lattice, or the message.
  std::string latticeOf(const std::string& text) {
    graph = Graph();
    const std::string message = read(text);
    return message.empty() ? describeLattice(graph) : message;
  }

  /// The links that this one line gives a lattice of 3 nodes without scores, or the message; the
  /// line is the file's second.
  std::string linksOf(const std::string& line) {
    graph = Graph();
    const std::string message = read("N=3\n" + line + "\n");
    return message.empty() ? describeLinks(*graph.adjacency) : message;
  }

  Graph graph;
  TemporaryFolder m_Folder;
};

/// A line or a file, and what it is to give.
struct Case {
  std::string text;
  std::string expected;
};

}  // namespace quorbel
