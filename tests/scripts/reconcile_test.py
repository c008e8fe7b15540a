"""The comparison of store and company file finds what is missing, doubled or different."""
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

SCRIPT = Path(__file__).parents[2] / "scripts" / "reconcile"
sys.dont_write_bytecode = True
loader = SourceFileLoader("reconcile", str(SCRIPT))
reconcile = module_from_spec(spec_from_loader("reconcile", loader))
loader.exec_module(reconcile)

HEAD = (
    "SALEID INTEGER, SaleDate, Invoice, ARCode, TotalSale, SubTotal, Status, Description, Tenders INTEGER, "
    + ", ".join(f"TendType{slot} INTEGER, TendAmount{slot}" for slot in range(1, 6))
)


def head(sale_id, total, subtotal=None, status="", description="", tender=1, customer=""):
    tenders = [tender, total] + [0, 0] * 4
    row = [sale_id, "20150105", f"{sale_id:07}", customer, total, subtotal or total, status, description, 1]
    return row + tenders


def receipt(number, total, tax="0", kind="SalesReceipt", place=1):
    return {"type": kind, "RefNumber": f"{number:07}", "total": total, "tax": tax, "lines": [], "txnNumber": place}


class Reconcile(unittest.TestCase):
    def run_on(self, heads, transactions, log="", before=None):
        with tempfile.TemporaryDirectory() as folder:
            store = sqlite3.connect(f"{folder}/NUVDATA1.mdf")
            store.execute(f"CREATE TABLE SalesHead ({HEAD})")
            store.execute("CREATE TABLE SalesItem (SaleID INTEGER, LineNum INTEGER)")
            store.execute("CREATE TABLE TenderTypes (TenderID INTEGER, TenderType INTEGER)")
            store.executemany("INSERT INTO TenderTypes VALUES (?, ?)", [(0, 0), (1, 1)])
            for row in heads:
                store.execute(f"INSERT INTO SalesHead VALUES ({','.join('?' * len(row))})", row)
                store.execute("INSERT INTO SalesItem VALUES (?, 1)", (row[0],))
            store.commit()
            store.close()
            files = {"now.json": {"transactions": transactions}, "before.json": {"transactions": before or []}}
            for name, content in files.items():
                Path(folder, name).write_text(json.dumps(content))
            Path(folder, "qbxml.log").write_text(log)
            Path(folder, "QBLINK.LOG").write_text("20150105 10:00 SalesAddNewReq 0000001 no\r\n")
            arguments = [folder, f"{folder}/now.json", f"{folder}/qbxml.log"]
            if before is not None:
                arguments += ["--before", f"{folder}/before.json"]
            output = io.StringIO()
            with contextlib.redirect_stdout(output):
                status = reconcile.main(arguments)
            return status, output.getvalue()

    def test_finds_what_is_wrong(self):
        refused = (
            '<!-- sent -->\n<QBXML><QBXMLMsgsRq><SalesReceiptAddRq><SalesReceiptAdd><RefNumber>0000001</RefNumber>'
            "</SalesReceiptAdd></SalesReceiptAddRq></QBXMLMsgsRq></QBXML>\n<!-- received -->\n<QBXML><QBXMLMsgsRs>"
            '<SalesReceiptAddRs statusCode="3180" statusMessage="no"/></QBXMLMsgsRs></QBXML>\n'
        )
        cases = [
            ("all is there", [head(1, "10")], [receipt(1, "10")], "", 0, ""),
            ("a sale is missing", [head(1, "10")], [], "", 1, "missing"),
            ("a sale was refused", [head(1, "10")], [], refused, 0, "refused (3180)"),
            ("a sale stands twice", [head(1, "10")], [receipt(1, "10"), receipt(1, "10")], "", 1, "2 times"),
            ("a cent is missing in the lines", [head(1, "10")], [receipt(1, "9.98")], "", 1, "without a cause"),
            ("the tax was computed anew", [head(1, "11", "10")], [receipt(1, "10.5", "0.5")], "", 0, "tax recomputed"),
            ("a marked row was not posted", [head(1, "10", status="V")], [], "", 0, "marked row"),
            ("a marked row was posted", [head(1, "10", status="V")], [receipt(1, "10")], "", 1, "is a marked row"),
            ("the wrong kind", [head(1, "10")], [receipt(1, "10", kind="Invoice")], "", 1, "not a SalesReceipt"),
            ("no sale of the store", [], [receipt(9, "10")], "", 1, "no sale of the store"),
        ]
        for given, heads, transactions, log, status, text in cases:
            with self.subTest(given):
                result, output = self.run_on(heads, transactions, log)
                self.assertEqual(result, status, output)
                self.assertIn(text, output)

    def test_names_why_a_double_was_not_seen(self):
        sales = [head(1, "10"), head(2, "10", tender=0)]
        old = [receipt(1, "10")]
        journal = receipt(1, "10", kind="JournalEntry", place=2)
        hidden = receipt(2, "10", kind="Invoice", place=3)
        status, output = self.run_on(sales, old + [journal, hidden], before=old)
        self.assertEqual(status, 0, output)
        self.assertIn("no search looks for journals", output)
        status, output = self.run_on(sales, old + [receipt(1, "10", place=2)], before=old)
        self.assertEqual(status, 1, output)

    def test_refuses_a_wrong_call(self):
        with contextlib.redirect_stderr(io.StringIO()):
            self.assertEqual(reconcile.main(["only one"]), 2)


if __name__ == "__main__":
    unittest.main()
