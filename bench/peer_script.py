#!/usr/bin/python3
"""What a user would write instead: one flat table, a row a goods item.

peer_script.py DECLARATION.xml TABLE.dbf (python3-lxml, python3-dbf)
"""

import sys

import dbf
from lxml import etree

FIELDS = (  # field, its type, element below the goods item
    ("G32", "N(5,0)", "GoodsNumeric"),
    ("G31", "C(250)", "GoodsDescription"),
    ("G33", "C(10)", "GoodsTNVEDCode"),
    ("G34", "C(2)", "OriginCountryCode"),
    ("G16", "C(40)", "OriginCountryName"),
    ("G35", "N(15,2)", "GrossWeightQuantity"),
    ("G38", "N(15,2)", "NetWeightQuantity"),
    ("G42", "N(15,2)", "InvoicedCost"),
    ("G42VAL", "C(3)", "InvoicedCurrencyCode"),
    ("G43", "C(1)", "CustomsCostCorrectMethod"),
    ("G45", "N(15,2)", "CustomsCost"),
    ("G46", "N(15,2)", "StatisticalCost"),
    ("G41", "N(15,2)", "SupplementaryGoodsQuantity/GoodsQuantity"),
    ("G37", "C(2)", "ESADCustomsProcedure/MainCustomsModeCode"),
    ("KOLUP", "N(8,0)", "ESADGoodsPackaging/PakageQuantity"),
)


def local(path):
    return "/".join(f"{{*}}{name}" for name in path.split("/"))


def value(text, kind):
    if not kind.startswith("N"):
        return text or ""
    return float(text) if text else None


def main(source, target):
    fields = [(name, kind, local(path)) for name, kind, path in FIELDS]
    table = dbf.Table(target, "; ".join(f"{name} {kind}" for name, kind, _ in fields),
                      codepage="cp866")
    with table.open(dbf.READ_WRITE):
        for goods in etree.parse(source).iter("{*}ESADout_CUGoods"):
            table.append(tuple(value(goods.findtext(path), kind) for _, kind, path in fields))


main(*sys.argv[1:])
