"""The comparison of daily totals finds what differs, is missing or was posted twice."""
import contextlib
import io
import json
import sqlite3
import sys
import tempfile
import unittest
from importlib.machinery import SourceFileLoader
from importlib.util import module_from_spec, spec_from_loader
from pathlib import Path

SCRIPT = Path(__file__).parents[2] / "scripts" / "reconcile-summary"
sys.dont_write_bytecode = True
loader = SourceFileLoader("reconcile_summary", str(SCRIPT))
reconcile = module_from_spec(spec_from_loader("reconcile_summary", loader))
loader.exec_module(reconcile)

HEAD = "SALEID INTEGER, SaleDate, Status, Description, SubTotal, TotalSale, Tenders INTEGER, " + ", ".join(
    f"TendAmount{slot}" for slot in range(1, 6)
)


def head(sale_id, day, total, status="", description=""):
    return [sale_id, day, status, description, total, total, 1, total, 0, 0, 0, 0]


def receipt(day, lines):
    lines = [{"ItemRef": {"FullName": item}, "Amount": amount} for item, amount in lines]
    return {"type": "SalesReceipt", "TxnDate": day, "lines": lines, "total": "0.00", "postings": []}


def journal(day, account, amount):
    postings = [{"account": account, "debit": amount, "credit": "0.00"}]
    return {"type": "JournalEntry", "TxnDate": day, "lines": [], "total": amount, "postings": postings}


SALES = [("0100", "10.00"), ("0012", "10.00")]
DAYS = [receipt("2015-01-05", SALES), journal("2015-01-05", "Cost of Goods Sold", "4.00")]
ORDER = {"type": "PurchaseOrder", "TxnDate": "2015-01-05", "lines": [], "total": "6.00", "postings": []}
RETURN = journal("2015-01-05", "Accounts Payable", "2.00")


class ReconcileSummary(unittest.TestCase):
    def run_on(self, heads, transactions, *options, receipts=()):
        with tempfile.TemporaryDirectory() as folder:
            store = sqlite3.connect(f"{folder}/NUVDATA1.mdf")
            store.execute(f"CREATE TABLE SalesHead ({HEAD})")
            store.execute("CREATE TABLE SalesItem (SaleID INTEGER, Cost, Shipped)")
            store.execute("CREATE TABLE POHistory (DateReceived, Status, UnitQty, UnitCost)")
            marks = ", ".join("?" * 12)
            store.executemany(f"INSERT INTO SalesHead VALUES ({marks})", heads)
            store.executemany("INSERT INTO SalesItem VALUES (?, 2, 2)", [(one[0],) for one in heads])
            store.executemany("INSERT INTO POHistory VALUES (?, ?, ?, ?)", receipts)
            store.commit()
            store.close()
            dump = Path(folder) / "dump.json"
            dump.write_text(json.dumps({"transactions": transactions}), encoding="utf-8")
            output = io.StringIO()
            with contextlib.redirect_stdout(output):
                status = reconcile.main([folder, str(dump), *options])
            return status, output.getvalue()

    def test_finds_what_is_wrong(self):
        sale = head(1, "20150105", 10)
        goods = [("20150105", "R", 3, 2), ("20150105", "U", 1, 2)]
        cases = [
            ("all is there", [sale], DAYS, (), ""),
            ("a voided sale and a cash drop do not count",
             [sale, head(2, "20150105", 5, status="V"), head(3, "20150105", 5, description="Cash Drop")], DAYS, (), ""),
            ("purchases and returns", [sale], [*DAYS, ORDER, RETURN], goods, ""),
            ("a return is missing", [sale], [*DAYS, ORDER], goods, "returns differ by 2.00"),
            ("another amount", [head(1, "20150105", 11)], DAYS, (), "sales differ by 1.00"),
            ("a negative tender counts", [sale],
             [receipt("2015-01-05", [*SALES, ("0013", "3.00"), ("6005", "3.00")]), DAYS[1]], (), ""),
            ("posted twice", [sale], [*DAYS, DAYS[0]], (), "2 sales receipts"),
            ("no cost", [sale], DAYS[:1], (), "cost differ by 4.00"),
            ("a day is missing", [sale, head(2, "20150106", 1)], DAYS, (), "20150106: 0 sales receipts"),
        ]
        for given, heads, transactions, receipts, problem in cases:
            with self.subTest(given):
                status, output = self.run_on(heads, transactions, receipts=receipts)
                self.assertEqual(status, 1 if problem else 0, output)
                self.assertIn(f"PROBLEM: {'' if problem[:2] == '20' else '20150105: '}{problem}" if problem else "day", output)

    def test_takes_a_range_as_one_day(self):
        heads = [head(1, "20150105", 6), head(2, "20150106", 4)]
        day = [DAYS[0], journal("2015-01-05", "Cost of Goods Sold", "8.00")]
        self.assertEqual(self.run_on(heads, day, "--range")[0], 0)
        self.assertEqual(self.run_on(heads, day)[0], 1)


if __name__ == "__main__":
    unittest.main()
