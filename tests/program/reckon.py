#!/usr/bin/env python3
"""Reckons the figures of the statistics once more, straight from the rows of a database and in another way than the
program does: everything is read, nothing is summed or grouped by the store.

usage: reckon.py DATABASE TODAY FICTIVE_HOUR   (TODAY is a whole day serial)
Prints lines "section|key|figures…", amounts with two decimals.
"""
import datetime
import math
import sqlite3
import sys
from collections import defaultdict

EPOCH = datetime.date(1899, 12, 30)
CASH = {"bar", "cash"}


def day(year, month, dayofmonth):
    return (datetime.date(year, month, dayofmonth) - EPOCH).days


def money(values):
    text = f"{math.fsum(values):.2f}"
    return "0.00" if text == "-0.00" else text


def out(*fields):
    print("|".join(str(field) for field in fields))


class Firm:
    def __init__(self, path):
        self.store = sqlite3.connect(f"file:{path}?mode=ro", uri=True)
        self.store.row_factory = sqlite3.Row
        self.heads = {row["lng_TrxNr"]: row for row in self.rows("tbl_Auftragswesen_Bestellungen_Master")}
        self.lines = defaultdict(list)
        for row in self.rows("tbl_Auftragswesen_Bestellungen_Details"):
            self.lines[row["lng_TrxNrMaster"]].append(row)
        self.couriers = {row["lng_ID"]: row["txt_Kurzzeichen"] for row in self.rows("tbl_Verwaltung_Kuriere")}
        self.products = {row["lng_ID"]: row for row in self.rows("tbl_Verwaltung_Produkte")}
        self.categories = {row["lng_ID"]: row["txt_ProduktGruppe"]
                           for row in self.rows("tbl_Verwaltung_ProdukteKategorien")}

    def rows(self, table):
        return self.store.execute(f"SELECT * FROM {table}").fetchall()

    def booked(self, courier=None, first=None, last=None):
        for head in self.heads.values():
            if courier is not None and head["lng_KurierID"] != courier:
                continue
            if first is not None and not first <= head["lng_BestellDatum"] <= last:
                continue
            yield head


def gross(line):
    return line["dbl_PreisMitMWSt"] - line["dbl_Rabatt"]


def journal(firm, name, courier=None, first=None, last=None):
    heads = list(firm.booked(courier, first, last))
    out("journal", name, len(heads), money(head["dbl_TotalMitMWSt"] for head in heads))


def turnover(firm, name, column, today, courier=None):
    year = (EPOCH + datetime.timedelta(today)).year
    by_day = defaultdict(list)
    for head in firm.booked(courier):
        by_day[head["lng_BestellDatum"]].append(head[column])
    for newest in sorted(by_day, reverse=True)[:24]:
        out("day", name, newest, money(by_day[newest]))
    starts = [day(year, month, 1) for month in range(1, 13)] + [day(year + 1, 1, 1)]
    for month in range(12):
        # January holds whatever came before it.
        first = -1 if month == 0 else starts[month]
        out("month", name, month + 1,
            money(v for d, vs in by_day.items() if first <= d < starts[month + 1] for v in vs))
    for at in range(year - 11, year + 1):
        first = -1 if at == year - 11 else day(at, 1, 1)
        out("year", name, at, money(v for d, vs in by_day.items() if first <= d < day(at + 1, 1, 1) for v in vs))


def peak_times(firm, first, last):
    counts = defaultdict(int)
    for head in firm.booked(None, first, last):
        if head["lng_KundenID"] != -1:
            minutes = round((head["dbl_BestellDatumNow"] - head["lng_BestellDatum"]) * 1440)
            weekday = (EPOCH + datetime.timedelta(head["lng_BestellDatum"])).weekday()
            counts[weekday, minutes // 60] += 1
    for weekday, hour in sorted(counts):
        out("peak", f"{weekday}-{hour}", counts[weekday, hour])


def products(firm, name, heads):
    by_product = defaultdict(list)
    for head in heads:
        for line in firm.lines[head["lng_TrxNr"]]:
            by_product[line["lng_ProduktID"]].append(line)
    by_category = defaultdict(list)
    total = []
    for key in sorted(by_product):
        product = firm.products.get(key)
        show_lines("product", name, product["txt_Kurzzeichen"] if product else "", by_product[key])
        total += by_product[key]
        if product and product["lng_ProduktGruppe"] in firm.categories:
            by_category[firm.categories[product["lng_ProduktGruppe"]]] += by_product[key]
    show_lines("products", name, "total", total)
    for category in sorted(by_category):
        show_lines("category", name, category, by_category[category])


def show_lines(section, name, key, lines):
    turnover_of = [gross(line) for line in lines]
    net = [-line["dbl_PreisOhneMWSt"] for line in lines]
    out(section, name, key, money(line["dbl_MengeIntern"] for line in lines), money(turnover_of),
        money(turnover_of + net))


def customers(firm):
    by_customer = defaultdict(list)
    for head in firm.heads.values():
        by_customer[head["lng_KundenID"]].append(head)
    sums = {key: math.fsum(head["dbl_TotalMitMWSt"] for head in heads) for key, heads in by_customer.items() if key >= 0}
    ranked = sorted(sums.values(), reverse=True)
    least = ranked[min(20, len(ranked)) - 1] if ranked else 0
    best = sorted(((value, key) for key, value in sums.items() if value >= least - 1e-9), reverse=True)
    for value, key in best:
        out("top", key, money([value]))
    # The firm's odd total: the group that comes first.
    out("top-total", "", money(head["dbl_TotalMitMWSt"] for head in by_customer[min(by_customer)]))
    chosen = best[0][1]
    for head in sorted(by_customer[chosen], key=lambda row: row["lng_LieferDatum"]):
        out("customer", chosen, head["txt_LieferDatum"], money([head["dbl_TotalMitMWSt"]]))
    out("customer-total", chosen, money(head["dbl_TotalMitMWSt"] for head in by_customer[chosen]))
    products(firm, f"customer{chosen}", by_customer[chosen])


def closing(firm, name, first, last, fictive):
    begin, end = first + fictive, last + 1 + fictive
    heads = [head for head in firm.heads.values() if begin <= head["dbl_BestellDatumNow"] < end]
    real = [head for head in heads if head["lng_KundenID"] != -1]
    lines = [line for head in heads for line in firm.lines[head["lng_TrxNr"]]]
    out("close", name, "orders", len(real))
    out("close", name, "cancelled", " ".join(str(head["lng_TrxNr"]) for head in sorted(heads, key=lambda row: row["lng_TrxNr"])
                                             if head["lng_KundenID"] == -1))
    out("close", name, "turnover", money(head["dbl_TotalMitMWSt"] for head in real))
    out("close", name, "discount", money(line["dbl_Rabatt"] for line in lines))
    for rate in sorted({line["dbl_MWStSatz"] for line in lines}):
        taxed = [line for line in lines if line["dbl_MWStSatz"] == rate]
        net = money(line["dbl_PreisOhneMWSt"] for line in taxed)
        full = [gross(line) for line in taxed]
        out("close-vat", name, f"{rate:.1f}", net, money(full + [-float(net)]), money(full))
    for word in sorted({head["txt_Konditionen"] for head in real}):
        of_word = [head for head in real if head["txt_Konditionen"] == word]
        out("close-terms", name, word, len(of_word), money(head["dbl_TotalMitMWSt"] for head in of_word))
    for courier in sorted({head["lng_KurierID"] for head in real}):
        of_courier = [head for head in real if head["lng_KurierID"] == courier]
        out("close-courier", name, firm.couriers.get(courier, ""), len(of_courier),
            money(head["dbl_TotalMitMWSt"] for head in of_courier),
            money(head["dbl_TotalMitMWSt"] for head in of_courier
                  if (head["txt_Konditionen"] or "").strip().lower() in CASH))


def main():
    firm, today, fictive = Firm(sys.argv[1]), int(sys.argv[2]), int(sys.argv[3]) / 24.0
    first, last = today - 40, today - 1
    courier = min(firm.couriers)
    journal(firm, "all")
    journal(firm, "span", None, first, last)
    journal(firm, "courier", courier)
    journal(firm, "both", courier, first, last)
    for column in ("dbl_TotalMitMWSt", "dbl_MWStBetrag"):
        turnover(firm, column, column, today)
        turnover(firm, column + "-courier", column, today, courier)
    peak_times(firm, first, last)
    by_moment = [head for head in firm.heads.values() if first <= head["dbl_BestellDatumNow"] <= last]
    products(firm, "span", by_moment)
    products(firm, "courier", [head for head in by_moment if head["lng_KurierID"] == courier])
    products(firm, "fictive", [head for head in firm.heads.values()
                               if first + fictive <= head["dbl_BestellDatumNow"] <= last + 1 + fictive])
    customers(firm)
    closing(firm, "day", today - 1, today - 1, fictive)
    closing(firm, "span", first, last, fictive)


if __name__ == "__main__":
    main()
