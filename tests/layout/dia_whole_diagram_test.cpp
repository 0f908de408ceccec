#include <gtest/gtest.h>

#include "layout/dia_writer.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

// A filled start node, a plain node and a highlighted link, as `dot` lays them out.
constexpr const char* kLayout = R"(digraph G {
	graph [bb="0,0,140,72",
		rankdir=LR
	];
	node [label="\N"];
	0	[color=red,
		fillcolor=lightgrey,
		height=0.5,
		pos="18,18",
		shape=doublecircle,
		style=filled,
		width=0.5];
	1	[height=0.5,
		pos="113,36",
		width=0.75];
	0 -> 1	[color=blue,
		comment="ID = 0",
		fontcolor=blue,
		label="a < b",
		lp="60,45",
		pos="e,86,36 36,18 48,18 60,36 76,36"];
}
)";

constexpr const char* kDiagram = R"(<?xml version="1.0" encoding="UTF-8"?>
<dia:diagram xmlns:dia="http://www.lysator.liu.se/~alla/dia/">
  <dia:diagramdata>
    <dia:attribute name="background">
      <dia:color val="#ffffff"/>
    </dia:attribute>
  </dia:diagramdata>
  <dia:layer name="Lattice" visible="true" active="true">
    <dia:group>
      <dia:object type="Standard - Ellipse" version="0" id="O0">
        <dia:attribute name="elem_corner">
          <dia:point val="0.1411,1.4111"/>
        </dia:attribute>
        <dia:attribute name="elem_width">
          <dia:real val="0.9878"/>
        </dia:attribute>
        <dia:attribute name="elem_height">
          <dia:real val="0.9878"/>
        </dia:attribute>
        <dia:attribute name="border_width">
          <dia:real val="0.0353"/>
        </dia:attribute>
        <dia:attribute name="border_color">
          <dia:color val="#ff0000"/>
        </dia:attribute>
        <dia:attribute name="inner_color">
          <dia:color val="#d3d3d3"/>
        </dia:attribute>
        <dia:attribute name="show_background">
          <dia:boolean val="true"/>
        </dia:attribute>
      </dia:object>
      <dia:object type="Standard - Ellipse" version="0" id="O1">
        <dia:attribute name="elem_corner">
          <dia:point val="0,1.27"/>
        </dia:attribute>
        <dia:attribute name="elem_width">
          <dia:real val="1.27"/>
        </dia:attribute>
        <dia:attribute name="elem_height">
          <dia:real val="1.27"/>
        </dia:attribute>
        <dia:attribute name="border_width">
          <dia:real val="0.0353"/>
        </dia:attribute>
        <dia:attribute name="border_color">
          <dia:color val="#ff0000"/>
        </dia:attribute>
        <dia:attribute name="show_background">
          <dia:boolean val="false"/>
        </dia:attribute>
      </dia:object>
      <dia:object type="Standard - Text" version="1" id="O2">
        <dia:attribute name="obj_pos">
          <dia:point val="0.635,2.0355"/>
        </dia:attribute>
        <dia:attribute name="text">
          <dia:composite type="text">
            <dia:attribute name="string">
              <dia:string>#0#</dia:string>
            </dia:attribute>
            <dia:attribute name="font">
              <dia:font family="serif" style="0" name="Times-Roman"/>
            </dia:attribute>
            <dia:attribute name="height">
              <dia:real val="0.6174"/>
            </dia:attribute>
            <dia:attribute name="pos">
              <dia:point val="0.635,2.0355"/>
            </dia:attribute>
            <dia:attribute name="color">
              <dia:color val="#000000"/>
            </dia:attribute>
            <dia:attribute name="alignment">
              <dia:enum val="1"/>
            </dia:attribute>
          </dia:composite>
        </dia:attribute>
        <dia:attribute name="valign">
          <dia:enum val="3"/>
        </dia:attribute>
      </dia:object>
    </dia:group>
    <dia:group>
      <dia:object type="Standard - Ellipse" version="0" id="O3">
        <dia:attribute name="elem_corner">
          <dia:point val="3.0339,0.635"/>
        </dia:attribute>
        <dia:attribute name="elem_width">
          <dia:real val="1.905"/>
        </dia:attribute>
        <dia:attribute name="elem_height">
          <dia:real val="1.27"/>
        </dia:attribute>
        <dia:attribute name="border_width">
          <dia:real val="0.0353"/>
        </dia:attribute>
        <dia:attribute name="border_color">
          <dia:color val="#000000"/>
        </dia:attribute>
        <dia:attribute name="show_background">
          <dia:boolean val="false"/>
        </dia:attribute>
      </dia:object>
      <dia:object type="Standard - Text" version="1" id="O4">
        <dia:attribute name="obj_pos">
          <dia:point val="3.9864,1.4005"/>
        </dia:attribute>
        <dia:attribute name="text">
          <dia:composite type="text">
            <dia:attribute name="string">
              <dia:string>#1#</dia:string>
            </dia:attribute>
            <dia:attribute name="font">
              <dia:font family="serif" style="0" name="Times-Roman"/>
            </dia:attribute>
            <dia:attribute name="height">
              <dia:real val="0.6174"/>
            </dia:attribute>
            <dia:attribute name="pos">
              <dia:point val="3.9864,1.4005"/>
            </dia:attribute>
            <dia:attribute name="color">
              <dia:color val="#000000"/>
            </dia:attribute>
            <dia:attribute name="alignment">
              <dia:enum val="1"/>
            </dia:attribute>
          </dia:composite>
        </dia:attribute>
        <dia:attribute name="valign">
          <dia:enum val="3"/>
        </dia:attribute>
      </dia:object>
    </dia:group>
    <dia:object type="Standard - BezierLine" version="0" id="O5">
      <dia:attribute name="bez_points">
        <dia:point val="1.27,1.905"/>
        <dia:point val="1.6933,1.905"/>
        <dia:point val="2.1167,1.27"/>
        <dia:point val="2.6811,1.27"/>
        <dia:point val="2.6811,1.27"/>
        <dia:point val="2.6811,1.27"/>
        <dia:point val="3.0339,1.27"/>
      </dia:attribute>
      <dia:attribute name="line_color">
        <dia:color val="#0000ff"/>
      </dia:attribute>
      <dia:attribute name="line_width">
        <dia:real val="0.0353"/>
      </dia:attribute>
      <dia:attribute name="end_arrow">
        <dia:enum val="3"/>
      </dia:attribute>
      <dia:attribute name="end_arrow_length">
        <dia:real val="0.3528"/>
      </dia:attribute>
      <dia:attribute name="end_arrow_width">
        <dia:real val="0.2469"/>
      </dia:attribute>
    </dia:object>
    <dia:object type="Standard - Text" version="1" id="O6">
      <dia:attribute name="obj_pos">
        <dia:point val="2.1167,1.083"/>
      </dia:attribute>
      <dia:attribute name="text">
        <dia:composite type="text">
          <dia:attribute name="string">
            <dia:string>#a &lt; b#</dia:string>
          </dia:attribute>
          <dia:attribute name="font">
            <dia:font family="serif" style="0" name="Times-Roman"/>
          </dia:attribute>
          <dia:attribute name="height">
            <dia:real val="0.6174"/>
          </dia:attribute>
          <dia:attribute name="pos">
            <dia:point val="2.1167,1.083"/>
          </dia:attribute>
          <dia:attribute name="color">
            <dia:color val="#0000ff"/>
          </dia:attribute>
          <dia:attribute name="alignment">
            <dia:enum val="1"/>
          </dia:attribute>
        </dia:composite>
      </dia:attribute>
      <dia:attribute name="valign">
        <dia:enum val="3"/>
      </dia:attribute>
    </dia:object>
  </dia:layer>
</dia:diagram>
)";

TEST(DiaWriter, WritesTheWholeDiagram) {
  TemporaryFolder folder;
  folder.write("graph.dot", kLayout);
  ASSERT_TRUE(writeDiaDiagram("graph.dot", "out.dia"));
  EXPECT_EQ(textOf("out.dia"), kDiagram);
}

}  // namespace
}  // namespace quorbel
