"""Writes two versions of a text in Markdown, always the same for the same arguments.

Usage: make_revisions.py KIND SIZE OLD NEW
KIND: equal       SIZE words, twice the same
      1% or 10%   SIZE words; that part of them edited, one by one or a few in a row, and a paragraph in a hundred moved,
                  new or gone
      rewrite     SIZE paragraphs that have nothing in common but ordinary words
      table       SIZE rows of a table, a figure of each changed
"""

import random
import sys

VOCABULARY = 20_000
WORDS_A_PARAGRAPH = (20, 120)
PARAGRAPHS_A_HEADING = 12


def make_vocabulary(source):
    letters = "aaabcdeeeefghiijklmnooprrssttuuvw"
    return ["".join(source.choices(letters, k=source.randint(2, 11))) for _ in range(VOCABULARY)]


def word(source, vocabulary):
    # Few words are common, most are rare.
    return vocabulary[int(VOCABULARY * source.random() ** 3)]


def paragraph(source, vocabulary):
    words = [word(source, vocabulary) for _ in range(source.randint(*WORDS_A_PARAGRAPH))]
    words[0] = words[0].capitalize()
    for index in range(7, len(words), 11):
        words[index] += source.choice([",", ".", ";"])
    words[-1] += "."
    return words


def text(source, vocabulary, size):
    paragraphs = []
    while size > 0:
        paragraphs.append(paragraph(source, vocabulary))
        size -= len(paragraphs[-1])
    return paragraphs


def edited(source, vocabulary, words, part):
    result = []
    index = 0
    while index < len(words):
        # An edit touches two words on the average.
        if source.random() >= part / 2:
            result.append(words[index])
            index += 1
            continue
        length = source.randint(1, 3)
        kind = source.random()
        if kind < 0.8:
            result += [word(source, vocabulary) for _ in range(length)]
        if kind < 0.6 or kind >= 0.8:
            index += length
    return result


def revised(source, vocabulary, paragraphs, part):
    result = [edited(source, vocabulary, words, part) for words in paragraphs]
    for _ in range(len(result) // 300):
        result.insert(source.randrange(len(result)), result.pop(source.randrange(len(result))))
        result.insert(source.randrange(len(result)), paragraph(source, vocabulary))
        result.pop(source.randrange(len(result)))
    return result


def write(file, paragraphs):
    with open(file, "w") as output:
        for index, words in enumerate(paragraphs):
            if index % PARAGRAPHS_A_HEADING == 0:
                output.write(f"## Section {index // PARAGRAPHS_A_HEADING + 1}\n\n")
            output.write(" ".join(words) + "\n\n")


def write_table(file, rows, shift):
    with open(file, "w") as output:
        output.write("| Row | Name | Kind | Figure |\n|---|---|---|---|\n")
        for row in range(rows):
            output.write(f"| {row} | Town {row % 977} | crate of apples | {row * 3 + shift} |\n")


def main():
    kind, size, old, new = sys.argv[1], int(sys.argv[2]), sys.argv[3], sys.argv[4]
    source = random.Random(1)
    vocabulary = make_vocabulary(source)
    if kind == "table":
        write_table(old, size, 0)
        write_table(new, size, 1)
    elif kind == "rewrite":
        write(old, [paragraph(source, vocabulary) for _ in range(size)])
        write(new, [paragraph(source, vocabulary) for _ in range(size)])
    else:
        paragraphs = text(source, vocabulary, size)
        write(old, paragraphs)
        part = 0 if kind == "equal" else float(kind.rstrip("%")) / 100
        write(new, revised(source, vocabulary, paragraphs, part) if part else paragraphs)


main()
