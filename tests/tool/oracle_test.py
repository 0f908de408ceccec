"""The command oracle: word error rates of lattices."""

import unittest

from tool import ARCHIVE, TALK, WORDS, ToolTest


class OracleTest(ToolTest):
    HEADING = ("utterance\twords\tbest_sub\tbest_del\tbest_ins\toracle_sub\toracle_del\toracle_ins\t"
               "links_per_second\n")

    def oracle(self, reference, *arguments, status=0, lattices=("talk.slf",)):
        self.write("reference", reference)
        result = self.run_tool("oracle", *lattices, "--reference", "reference", *arguments)
        self.assertEqual(status, result.returncode, result.stderr)
        return result

    def test_prints_a_row_for_each_lattice_and_their_sum(self):
        result = self.oracle("could be a day\n")
        row = "    4     75.00      1      2      0       50.00      0      2      0        4  "
        self.assertEqual(
            "words  best WER    sub    del    ins  oracle WER    sub    del    ins  links/s  utterance\n"
            + row + "talk\n" + row + "TOTAL\n", result.stdout)
        self.assertEqual("", result.stderr)

    def test_prints_alignments(self):
        lines = self.oracle("could be a day\n", "--alignment").stdout.splitlines()
        self.assertEqual(["  reference: could be  a   day",
                          "  best:      good  *** *** day",
                          "  oracle:    could *** *** day"], lines[2:5])

    def test_takes_references_in_four_forms(self):
        self.write("monday.slf", TALK.replace("talk", "other"))
        lattices = ("monday.slf", "talk.slf")
        row = "\t2\t1\t0\t0\t0\t0\t0\t4\n"
        expected = (self.HEADING + "other" + row + "talk" + row +
                    "TOTAL\t4\t2\t0\t0\t0\t0\t0\t4\n")
        for reference in ("talk could day\nmonday could day\n",
                          "could day (other)\ncould day (talk)\n",
                          '#!MLF!#\n"*/talk.lab"\ncould\nday\n.\n"*/monday.lab"\n0 9 could\nday\n.\n'):
            with self.subTest(reference=reference):
                result = self.oracle(reference, "--tsv", lattices=lattices)
                self.assertEqual((expected, "quorbel-lattice: 2 lattices done\n"),
                                 (result.stdout, result.stderr))
        self.assertEqual(self.HEADING + "talk" + row + "TOTAL" + row,
                         self.oracle("could day\n", "--tsv").stdout)

    def test_names_what_is_missing_on_either_side(self):
        self.write("monday.slf", TALK.replace("talk", "other"))
        result = self.oracle("talk good day\ntuesday x\nfriday\n", "--tsv", status=1,
                             lattices=("monday.slf", "talk.slf"))
        self.assertEqual("quorbel-lattice: monday.slf: no reference in reference\n"
                         "quorbel-lattice: reference: no lattice for tuesday friday\n"
                         "quorbel-lattice: 1 lattice done, 1 failed\n", result.stderr)
        self.assertEqual("TOTAL\t2\t0\t0\t0\t0\t0\t0\t4", result.stdout.splitlines()[-1])

    def test_words_can_be_ignored_and_capitals_too(self):
        reference = "GOOD um Day oh\n"
        for options, row in (((), "4\t2\t2\t0\t2\t2\t0"),
                             (("--ignore", "um,oh"), "2\t2\t0\t0\t2\t0\t0"),
                             (("--ignore", "UM", "--ignore", "Oh,good", "--ignore-case"),
                              "1\t0\t0\t0\t0\t0\t0")):
            result = self.oracle(reference, "--tsv", *options)
            self.assertEqual(f"talk\t{row}\t4", result.stdout.splitlines()[1], options)

    def test_says_what_is_wrong_with_the_references(self):
        self.assertEqual("none: No such file or directory",
                         self.fails("oracle", "talk.slf", "--reference", "none"))
        self.write("twice", "a b\na c\n")
        self.assertEqual("twice: line 2: a second reference for a",
                         self.fails("oracle", "talk.slf", "--reference", "twice"))
        self.assertIn("--alignment excludes --tsv",
                      self.fails("oracle", "talk.slf", "--reference", "twice", "--tsv", "--alignment"))

    def test_plain_words_are_those_of_an_archive_of_one_utterance_only(self):
        words = self.write("words.txt", WORDS)
        self.write("lat.1", ARCHIVE)
        self.write("lat.2", ARCHIVE[:ARCHIVE.index("talk-2")] + "\n")
        result = self.oracle("talk-2 day\n", "--tsv", "--words", words, lattices=("lat.1",), status=1)
        self.assertEqual("quorbel-lattice: lat.1: talk-1: no reference in reference\n"
                         "quorbel-lattice: 1 lattice done, 1 failed\n", result.stderr)
        self.oracle("good day\n", "--words", words, lattices=("lat.2", "lat.2"), status=1)
        for arguments in (("lat.2",), ("lat.1", "--utterance", "talk-1")):
            result = self.oracle("good day\n", "--tsv", "--words", words, lattices=arguments)
            self.assertIn("talk-1\t2\t0\t0\t0\t0\t0\t0\t", result.stdout)

    def test_the_labels_that_best_writes_are_references(self):
        self.write("monday.slf", TALK.replace("talk", "talk.plp"))
        labels = self.run_tool("best", "monday.slf", "talk.slf", "--format", "htk").stdout
        result = self.oracle(labels, "--tsv", lattices=("monday.slf", "talk.slf"))
        self.assertEqual("quorbel-lattice: 2 lattices done\n", result.stderr)

    def test_takes_utterances_of_an_archive_by_their_names_only(self):
        self.write("lat.1", ARCHIVE)
        words = self.write("words.txt", WORDS)
        result = self.oracle("talk-2 day\ntalk-1 good day\n", "--tsv", "--words", words,
                             lattices=("lat.1",))
        self.assertEqual(["talk-1\t2\t0\t0\t0\t0\t0\t0", "talk-2\t1\t0\t0\t0\t0\t0\t0",
                          "TOTAL\t3\t0\t0\t0\t0\t0\t0"],
                         [line.rpartition("\t")[0] for line in result.stdout.splitlines()[1:]])


if __name__ == "__main__":
    unittest.main()
