#!/usr/bin/env python3
"""Writes the table of critical r squared as C++.

Reads the quantiles of a simulation as separated text: lines of kind (1 Weibull, 2 lognormal),
three (1 with a minimum life of the best r squared), N, samples, critical r squared, its
standard error, and the quantiles of v = -ln(1 - r squared) at the 25 levels that the
heading names. Lines are in order; tests/tools/repeat_critical_r_squared repeats them.

    tools/make_critical_r_squared.py TABLE.csv > src/analyses/critical_r_squared.inc
"""
import itertools
import sys

LEVELS = 25
TITLES = {("1", "0"): "Weibull", ("1", "1"): "Weibull, minimum life", ("2", "0"): "Lognormal",
          ("2", "1"): "Lognormal, minimum life"}


def node(cells):
    return f"    {{{cells[2]}, {{{', '.join(cells[-LEVELS:])}}}}},"


def main(path):
    with open(path) as lines:
        rows = [line.strip().split(",") for line in lines if line[0].isdigit()]
    print("// Written by tools/make_critical_r_squared.py: N, and v at each level.")
    for family, nodes in itertools.groupby(rows, lambda cells: tuple(cells[:2])):
        print(f"{{{{  // {TITLES[family]}")
        print("\n".join(node(cells) for cells in nodes))
        print("}},")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: make_critical_r_squared.py TABLE.csv")
    main(sys.argv[1])
