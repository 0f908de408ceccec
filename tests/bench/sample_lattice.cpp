#include "sample_lattice.h"

#include <algorithm>
#include <fstream>
#include <random>

namespace quorbel {

SampleLattice writeSampleLattice(const std::string& path, int nodeCount, int linksPerNode) {
  const std::string stem = path + "/sample" + std::to_string(nodeCount);
  const SampleLattice files{stem + ".lat", stem + ".fst.txt", stem + ".dot"};
  std::ofstream lattice(files.latticeFile);
  std::ofstream fst(files.fstFile);
  std::ofstream layout(files.layoutFile);
  const int linkCount = (nodeCount - 1) * linksPerNode;

  lattice << "VERSION=1.0\nN=" << nodeCount << " L=" << linkCount << "\n";
  layout << "digraph G {\n\tgraph [bb=\"0,0," << nodeCount * 20
         << ",400\",\n\t\trankdir=LR\n\t];\n\tnode [label=\"\\N\"];\n";
  for (int node = 0; node < nodeCount; ++node) {
    lattice << "I=" << node << " t=" << node * 0.01 << "\n";
    layout << "\t" << node << "\t[height=0.5,\n\t\tpos=\"" << node * 20 << "," << node % 400
           << "\",\n\t\twidth=0.75];\n";
  }
  std::mt19937 random(20081);
  std::uniform_int_distribution<int> step(1, 8);
  std::uniform_int_distribution<int> word(1, 2000);
  for (int link = 0; link < linkCount; ++link) {
    const int start = link / linksPerNode;
    const bool keepsConnected = link % linksPerNode == 0;
    const int end = keepsConnected ? start + 1 : std::min(start + step(random), nodeCount - 1);
    const int label = word(random);
    const double cost = 100.0 + word(random) / 7.0;
    lattice << "J=" << link << " S=" << start << " E=" << end << " W=<w in='word" << label
            << "' out='Wort" << label << "' conf='0.8'/> a=-" << cost << " l=-" << label / 300.0
            << "\n";
    fst << start << " " << end << " " << label << " " << label << " " << cost << "\n";
    layout << "\t" << start << " -> " << end << "\t[color=black,\n\t\tcomment=\"ID = " << link
           << "\",\n\t\tlabel=\"word" << label << " / Wort" << label << "\",\n\t\tlp=\""
           << start * 20 + 30 << "," << link % 400 << ".5\",\n\t\tpos=\"e,10,20 30,40 50,60\"];\n";
  }
  layout << "}\n";
  fst << nodeCount - 1 << "\n";
  return files;
}

}  // namespace quorbel
