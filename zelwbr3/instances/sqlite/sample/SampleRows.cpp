#include "zelwbr3/instances/sqlite/sample/SampleRows.h"

#include "zelwbr3/instances/sqlite/file/Handle.h"
#include "zelwbr3/instances/sqlite/file/Statement.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <iterator>
#include <utility>

namespace ZELWbr3::SQLite {

namespace {

constexpr int kSites = 6;
constexpr int kDepartments = 24;
constexpr int kEmployees = 480;
constexpr int kSuppliers = 240;
constexpr int kProducts = 2400;
constexpr int kCustomers = 6000;
constexpr int kOrders = 60000;
constexpr int kOrdersToday = 24;
constexpr int kMachines = 40;
constexpr int kReadings = 90000;
constexpr int kDays = 730;
constexpr std::chrono::sys_days kFirstDay = std::chrono::year(2023) / 1 / 2;

constexpr char kTables[] = R"(
CREATE TABLE site(id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, town TEXT NOT NULL);
CREATE TABLE department(id INTEGER PRIMARY KEY, site_id INTEGER NOT NULL REFERENCES site(id), name TEXT NOT NULL);
CREATE TABLE employee(id INTEGER PRIMARY KEY, department_id INTEGER NOT NULL REFERENCES department(id),
  name TEXT NOT NULL, role TEXT NOT NULL, hired_on TEXT NOT NULL, salary_cents INTEGER NOT NULL);
CREATE TABLE supplier(id INTEGER PRIMARY KEY, name TEXT NOT NULL, town TEXT NOT NULL, lead_days INTEGER NOT NULL);
CREATE TABLE product(id INTEGER PRIMARY KEY, sku TEXT NOT NULL UNIQUE, name TEXT NOT NULL, category TEXT NOT NULL,
  supplier_id INTEGER NOT NULL REFERENCES supplier(id), price_cents INTEGER NOT NULL CHECK(price_cents > 0),
  discontinued INTEGER NOT NULL DEFAULT 0);
CREATE TABLE stock(product_id INTEGER NOT NULL REFERENCES product(id), site_id INTEGER NOT NULL REFERENCES site(id),
  on_hand INTEGER NOT NULL, reorder_at INTEGER NOT NULL, PRIMARY KEY(product_id, site_id)) WITHOUT ROWID;
CREATE TABLE customer(id INTEGER PRIMARY KEY, name TEXT NOT NULL, town TEXT NOT NULL, segment TEXT NOT NULL,
  since TEXT NOT NULL, note TEXT);
CREATE TABLE sales_order(id INTEGER PRIMARY KEY, customer_id INTEGER NOT NULL REFERENCES customer(id),
  employee_id INTEGER NOT NULL REFERENCES employee(id), site_id INTEGER NOT NULL REFERENCES site(id),
  ordered_on TEXT NOT NULL, state TEXT NOT NULL);
CREATE TABLE sales_order_line(order_id INTEGER NOT NULL REFERENCES sales_order(id), line INTEGER NOT NULL,
  product_id INTEGER NOT NULL REFERENCES product(id), quantity INTEGER NOT NULL, price_cents INTEGER NOT NULL,
  PRIMARY KEY(order_id, line)) WITHOUT ROWID;
CREATE TABLE invoice(id INTEGER PRIMARY KEY, order_id INTEGER NOT NULL REFERENCES sales_order(id),
  issued_on TEXT NOT NULL, amount_cents INTEGER NOT NULL, paid_on TEXT);
CREATE TABLE machine(id INTEGER PRIMARY KEY, site_id INTEGER NOT NULL REFERENCES site(id), name TEXT NOT NULL);
CREATE TABLE machine_reading(id INTEGER PRIMARY KEY, machine_id INTEGER NOT NULL REFERENCES machine(id),
  read_at TEXT NOT NULL, temperature REAL NOT NULL, load_percent INTEGER NOT NULL);
)";

constexpr char kRest[] = R"(
CREATE INDEX employee_by_department ON employee(department_id);
CREATE INDEX product_by_category ON product(category, name);
CREATE INDEX customer_by_name ON customer(name);
CREATE INDEX sales_order_by_customer ON sales_order(customer_id, ordered_on);
CREATE INDEX sales_order_open ON sales_order(ordered_on) WHERE state <> 'closed';
CREATE INDEX sales_order_line_by_product ON sales_order_line(product_id);
CREATE INDEX invoice_by_order ON invoice(order_id);
CREATE INDEX invoice_unpaid ON invoice(issued_on) WHERE paid_on IS NULL;
CREATE INDEX machine_reading_by_machine ON machine_reading(machine_id, read_at);
CREATE VIEW order_value AS
  SELECT o.id, o.customer_id, o.ordered_on, o.state, sum(l.quantity * l.price_cents) AS value_cents
  FROM sales_order o JOIN sales_order_line l ON l.order_id = o.id GROUP BY o.id;
CREATE VIEW stock_to_reorder AS
  SELECT s.site_id, p.sku, p.name, s.on_hand, s.reorder_at FROM stock s JOIN product p ON p.id = s.product_id
  WHERE s.on_hand < s.reorder_at AND NOT p.discontinued;
CREATE TRIGGER sales_order_line_takes_stock AFTER INSERT ON sales_order_line BEGIN
  UPDATE stock SET on_hand = on_hand - new.quantity
  WHERE product_id = new.product_id AND site_id = (SELECT site_id FROM sales_order WHERE id = new.order_id);
END;
)";

constexpr const char* kSyllables[] = {"bra", "del", "fen", "gor", "hal", "kem", "lor", "mav", "nil", "ost",
                                      "pel", "rin", "sol", "tar", "ulm", "ven", "wes", "yar", "zen", "dun"};
constexpr const char* kTownEndings[] = {"ford", "wick", "stead", "mouth", "dale", "bridge"};
constexpr const char* kTrades[] = {"Bakery",   "Joinery",  "Garage",  "Nursery",  "Brewery", "Laundry",
                                   "Printers", "Builders", "Foundry", "Pharmacy", "Canteen", "School"};
constexpr const char* kDepartmentNames[] = {"Sales", "Purchasing", "Warehouse", "Accounts"};
constexpr const char* kRoles[] = {"clerk", "senior clerk", "driver", "technician", "team lead"};
constexpr const char* kSegments[] = {"retail", "trade", "public", "export"};
constexpr const char* kCategories[] = {"fasteners", "hand tools", "lighting", "paint", "plumbing", "safety", "timber"};
constexpr const char* kMaterials[] = {"steel", "brass", "oak", "pine", "copper", "rubber", "glass", "nylon"};
constexpr const char* kThings[] = {"bracket", "hinge", "lamp", "valve", "clamp", "panel", "brush", "hook", "pipe"};
constexpr const char* kMachineKinds[] = {"Saw", "Press", "Lathe", "Oven", "Conveyor"};

std::string Day(std::int64_t lDay) {
  const std::chrono::year_month_day dDay(kFirstDay + std::chrono::days(lDay));
  std::array<char, 32> sText;
  std::snprintf(sText.data(), sText.size(), "%04d-%02u-%02u", int(dDay.year()), unsigned(dDay.month()),
                unsigned(dDay.day()));
  return sText.data();
}

std::string Capital(std::string sText) {
  sText[0] = static_cast<char>(sText[0] - 'a' + 'A');
  return sText;
}

}  // namespace

struct SampleRows::OrderStatements {
  explicit OrderStatements(sqlite3* pHandle)
      : Order(pHandle, "INSERT INTO sales_order VALUES(?,?,?,?,?,?)", "writing the sample orders"),
        Line(pHandle, "INSERT INTO sales_order_line VALUES(?,?,?,?,?)", "writing the sample order lines"),
        Invoice(pHandle, "INSERT INTO invoice VALUES(?,?,?,?,?)", "writing the sample invoices") {}

  Statement Order;
  Statement Line;
  Statement Invoice;
};

SampleRows::SampleRows(sqlite3* pHandle, SampleProgress oProgress)
    : m_pHandle(pHandle), m_oProgress(std::move(oProgress)) {}

void SampleRows::WriteHistory() {
  const std::string sAsked = "writing the sample database";
  Report(0);
  Execute(m_pHandle, "PRAGMA auto_vacuum=NONE; BEGIN", sAsked);
  Execute(m_pHandle, kTables, sAsked);
  WriteCompany();
  Report(10);
  WriteTrade();
  Report(60);
  WriteReadings();
  Report(75);
  Execute(m_pHandle, kRest, sAsked);
  Execute(m_pHandle, "COMMIT; ANALYZE", sAsked);
  Report(90);
  // Readings are kept for a year; their pages are free now.
  Execute(m_pHandle, "DELETE FROM machine_reading WHERE read_at < '" + Day(kDays / 2) + "'", sAsked);
  Report(95);
}

void SampleRows::WriteToday() {
  OrderStatements oStatements(m_pHandle);
  for (int i = 0; i < kOrdersToday; ++i) {
    Execute(m_pHandle, "BEGIN", "beginning a sample order");
    WriteOrder(oStatements, kOrders + i, kDays);
    Execute(m_pHandle, "COMMIT", "writing a sample order");
  }
  Report(99);
}

void SampleRows::WriteCompany() {
  const std::string sAsked = "writing the sample company";
  Statement oSite(m_pHandle, "INSERT INTO site VALUES(?,?,?)", sAsked);
  for (int i = 1; i <= kSites; ++i) oSite.Run(i, "Branch " + std::to_string(i), Town());

  Statement oDepartment(m_pHandle, "INSERT INTO department VALUES(?,?,?)", sAsked);
  for (int i = 0; i < kDepartments; ++i) {
    oDepartment.Run(i + 1, i / std::size(kDepartmentNames) + 1, kDepartmentNames[i % std::size(kDepartmentNames)]);
  }

  Statement oEmployee(m_pHandle, "INSERT INTO employee VALUES(?,?,?,?,?,?)", sAsked);
  for (int i = 1; i <= kEmployees; ++i) {
    oEmployee.Run(i, Pick(kDepartments) + 1, Name() + " " + Name(), Pick(kRoles), Day(-Pick(6000)),
                  240000 + 100 * Pick(4000));
  }

  Statement oSupplier(m_pHandle, "INSERT INTO supplier VALUES(?,?,?,?)", sAsked);
  for (int i = 1; i <= kSuppliers; ++i) oSupplier.Run(i, Name() + " Supplies", Town(), 1 + Pick(28));

  Statement oProduct(m_pHandle, "INSERT INTO product VALUES(?,?,?,?,?,?,?)", sAsked);
  Statement oStock(m_pHandle, "INSERT INTO stock VALUES(?,?,?,?)", sAsked);
  for (int i = 1; i <= kProducts; ++i) {
    const std::string sName = std::string(Pick(kMaterials)) + " " + Pick(kThings) + " " + std::to_string(5 + Pick(95));
    oProduct.Run(i, "P-" + std::to_string(100000 + i), sName, Pick(kCategories), Pick(kSuppliers) + 1, 50 + Pick(30000),
                 Pick(20) == 0);
    for (int iSite = 1; iSite <= kSites; ++iSite) oStock.Run(i, iSite, 20 + Pick(400), 10 + Pick(40));
  }

  Statement oCustomer(m_pHandle, "INSERT INTO customer VALUES(?,?,?,?,?,?)", sAsked);
  for (int i = 1; i <= kCustomers; ++i) {
    const std::string sName = Name() + " " + Pick(kTrades);
    if (Pick(10) == 0) {
      oCustomer.Run(i, sName, Town(), Pick(kSegments), Day(-Pick(4000)), "Deliveries before noon only");
    } else {
      oCustomer.Run(i, sName, Town(), Pick(kSegments), Day(-Pick(4000)), nullptr);
    }
  }
}

void SampleRows::WriteTrade() {
  OrderStatements oStatements(m_pHandle);
  for (int i = 0; i < kOrders; ++i) {
    WriteOrder(oStatements, i, std::int64_t(i) * kDays / kOrders);
    if (i % 6000 == 0) Report(10 + 50 * i / kOrders);
  }
}

/// Orders count from 0. An order is invoiced two days later and paid within two
/// months, if at all.
void SampleRows::WriteOrder(OrderStatements& oStatements, std::int64_t lOrder, std::int64_t lDay) {
  const bool bInvoiced = lDay + 2 < kDays;
  const bool bPaid = bInvoiced && lDay + 62 < kDays && Pick(50) != 0;
  oStatements.Order.Run(lOrder + 1, Pick(kCustomers) + 1, Pick(kEmployees) + 1, Pick(kSites) + 1, Day(lDay),
                        bPaid       ? "closed"
                        : bInvoiced ? "invoiced"
                                    : "open");
  std::int64_t lAmount = 0;
  const std::int64_t lLines = 1 + Pick(5);
  for (std::int64_t lLine = 1; lLine <= lLines; ++lLine) {
    const std::int64_t lQuantity = 1 + Pick(12);
    const std::int64_t lPrice = 50 + Pick(30000);
    lAmount += lQuantity * lPrice;
    oStatements.Line.Run(lOrder + 1, lLine, Pick(kProducts) + 1, lQuantity, lPrice);
  }
  if (bPaid) {
    oStatements.Invoice.Run(lOrder + 1, lOrder + 1, Day(lDay + 2), lAmount, Day(lDay + 4 + Pick(58)));
  } else if (bInvoiced) {
    oStatements.Invoice.Run(lOrder + 1, lOrder + 1, Day(lDay + 2), lAmount, nullptr);
  }
}

void SampleRows::WriteReadings() {
  const std::string sAsked = "writing the sample readings";
  Statement oMachine(m_pHandle, "INSERT INTO machine VALUES(?,?,?)", sAsked);
  for (int i = 1; i <= kMachines; ++i) {
    oMachine.Run(i, Pick(kSites) + 1, std::string(Pick(kMachineKinds)) + " " + std::to_string(i));
  }
  Statement oReading(m_pHandle, "INSERT INTO machine_reading VALUES(?,?,?,? / 10.0,?)", sAsked);
  for (std::int64_t i = 0; i < kReadings; ++i) {
    const std::int64_t lHour = i * kDays * 24 / kReadings;
    const std::string sTime = Day(lHour / 24) + (lHour % 24 < 10 ? " 0" : " ") + std::to_string(lHour % 24) + ":00:00";
    oReading.Run(i + 1, i % kMachines + 1, sTime, 180 + Pick(500), Pick(101));
  }
}

std::string SampleRows::Name() { return Capital(std::string(Pick(kSyllables)) + Pick(kSyllables)); }

std::string SampleRows::Town() { return Capital(std::string(Pick(kSyllables)) + Pick(kTownEndings)); }

void SampleRows::Report(int iPercent) {
  if (m_oProgress) m_oProgress(iPercent);
}

}  // namespace ZELWbr3::SQLite
