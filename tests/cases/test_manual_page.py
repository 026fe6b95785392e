"""The manual page tells what the program tells of itself, no less and no more."""

import re
import unittest

from support import SOURCE, Case

PAGE = (SOURCE / "docs" / "quillbox.1").read_text()
HELP = ("-h,--help", "Print this help message and exit")


def plain(roff):
    """A line of the page as a reader sees it."""
    line = re.sub(r"\\f[BIR]", "", roff).replace("\\-", "-")
    macro, _, rest = line.partition(" ")
    if macro in (".B", ".I"):
        return rest
    if macro in (".BI", ".BR", ".IR"):
        return "".join(quoted or word for quoted, word in re.findall(r'"([^"]*)"|(\S+)', rest))
    return line


def terms(text):
    """The terms that a part of the page explains, with the first line of what it says."""
    lines = text.splitlines()
    return [(plain(lines[at + 1]), plain(lines[at + 2])) for at, line in enumerate(lines) if line == ".TP"]


def part(head, text=PAGE):
    body = text.split(head + "\n", 1)[1]
    return re.split(r"^\.S[HS] ", body, maxsplit=1, flags=re.MULTILINE)[0]


class ManualPage(Case):
    def help_of(self, *command):
        return self.run_program(*command, "--help")[0]

    def explained(self, text):
        """What a help text explains: options and arguments with their lines."""
        rows = re.findall(r"^ +(-\S+(?: TEXT\S*)?|[A-Z]+ TEXT REQUIRED) {2,}(\S.*?)\s*$", text, re.MULTILINE)
        return [(name.replace(" TEXT REQUIRED", ""), line) for name, line in rows]

    def subcommands(self):
        listed = self.help_of().split("Subcommands:\n")[1]
        return re.findall(r"^  (\S+) +(\S.*?)\s*$", listed, re.MULTILINE)

    def test_it_has_the_programs_line_usage_and_options(self):
        text = self.help_of()
        description, usage = text.splitlines()[:2]
        self.assertIn(f"quillbox \\- {description.rstrip('.')}\n", PAGE)
        self.assertEqual("Usage: quillbox " + plain(part(".B quillbox").splitlines()[0]), usage)
        self.assertEqual([(name, line.rstrip(".")) for name, line in terms(part(".SH OPTIONS"))], self.explained(text))

    def test_it_has_every_subcommand_with_its_options(self):
        heads = [(name, f".SS {usage}") for name, usage in re.findall(r"^\.SS (?=quillbox (\S+))(.*)$", PAGE, re.MULTILINE)]
        self.assertEqual([name for name, _ in heads], [name for name, _ in self.subcommands()])
        for (name, head), (_, line) in zip(heads, self.subcommands()):
            with self.subTest(name):
                text = self.help_of(name)
                self.assertIn("Usage: " + head.removeprefix(".SS ") + "\n", text)
                self.assertEqual(part(head).splitlines()[0], line)
                self.assertEqual(sorted([HELP, *terms(part(head))]), sorted(self.explained(text)))

    def test_it_is_of_the_programs_version(self):
        self.assertIn(f'"Quillbox {self.run_program("--version")[0].strip().split()[-1]}"', PAGE)


if __name__ == "__main__":
    unittest.main()
