#pragma once

// Small lattices, their layout as text, and what stands in for the world outside, for the tests of
// this folder.

#include <clocale>
#include <locale>
#include <string>
#include <vector>

#include "lattice/graph.h"
#include "temporary_folder.h"

namespace quorbel {

/// A lattice of that many nodes at equal steps of time, whose links are still to come. Makes "cost"
/// the current score.
Graph latticeOf(int nodeCount);

/// Four nodes, two ways from the first to the last: "a c " costs 2, "b d " costs 5.
Graph diamond();

/// A link's word whose label is `text`.
std::string wordOf(const std::string& text);

/// Appends a link with the label `text`.
void link(Graph& graph, int start, int end, const std::string& text, double cost, int id);

/// Selects the first link of that id.
void select(Graph& graph, int linkId);

std::string descriptionOf(Graph& graph);

/// The text of a file in the folder fixtures/.
std::string fixture(const std::string& name);

/// An item with everything that it holds, as one line.
std::string asText(const LayoutItem& item);

/// What reading this layout does: the items and bounding box that it leaves, what it prints and
/// whether it throws std::out_of_range, a line each.
std::string reading(Graph& graph, const std::string& layout);

/// The same of the items alone, in a lattice of `nodeCount` nodes without links.
std::string readItems(int nodeCount, const std::string& layout);

/// Sets a variable of the environment while it lives.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const std::string& value);
  ~EnvironmentVariable();
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  const char* m_Name;
  std::string m_Before;
};

/// Makes a locale that of the process while it lives, for C and for C++.
class ProcessLocale {
 public:
  explicit ProcessLocale(const std::string& name)
      : m_Before(std::locale::global(std::locale(name))) {
    std::setlocale(LC_ALL, name.c_str());
  }
  ~ProcessLocale() {
    std::locale::global(m_Before);
    std::setlocale(LC_ALL, "C");
  }
  ProcessLocale(const ProcessLocale&) = delete;
  ProcessLocale& operator=(const ProcessLocale&) = delete;

 private:
  std::locale m_Before;
};

/// A stand-in for `dot`, first on the search path while it lives. Notes its arguments, draws
/// nothing and ends with the given status.
class StandInDot {
 public:
  explicit StandInDot(int exitStatus = 0);

  /// The arguments of each run, in brackets: "[-Tpng][-o][graph.png][quorbel_graph.dot]\n".
  std::string runs() const { return textOf(m_Folder.path() / "runs"); }

 private:
  class Folder {
   public:
    Folder();
    ~Folder();
    const std::filesystem::path& path() const { return m_Path; }

   private:
    std::filesystem::path m_Path;
  };

  Folder m_Folder;  ///< not the working directory, in which tests look for files that appeared
  EnvironmentVariable m_SearchPath;
};

}  // namespace quorbel
