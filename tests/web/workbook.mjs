// A workbook of some sheets, as a spreadsheet program saves it.

/** The check number of a zip archive. */
function crc32(bytes) {
  let crc = ~0;
  for (const byte of bytes) {
    crc ^= byte;
    for (let bit = 0; bit < 8; ++bit) crc = (crc >>> 1) ^ (crc & 1 ? 0xedb88320 : 0);
  }
  return ~crc >>> 0;
}

const numbers = (...all) =>
  Buffer.concat(
    all.map(([size, value]) => {
      const bytes = Buffer.alloc(size);
      bytes.writeUIntLE(value, 0, size);
      return bytes;
    }),
  );

/** Files by their names, none of them compressed. */
function zip(files) {
  const parts = [];
  const entries = [];
  let offset = 0;
  for (const [name, text] of Object.entries(files)) {
    const bytes = Buffer.from(text);
    const title = Buffer.from(name);
    const about = numbers([2, 20], [2, 0], [2, 0], [4, 0], [4, crc32(bytes)], [4, bytes.length], [4, bytes.length], [2, title.length], [2, 0]);
    const part = Buffer.concat([Buffer.from("PK\x03\x04"), about, title, bytes]);
    entries.push(Buffer.from("PK\x01\x02"), numbers([2, 20]), about, numbers([2, 0], [2, 0], [2, 0], [4, 0], [4, offset]), title);
    parts.push(part);
    offset += part.length;
  }
  const list = Buffer.concat(entries);
  const count = Object.keys(files).length;
  const end = numbers([2, 0], [2, 0], [2, count], [2, count], [4, list.length], [4, offset], [2, 0]);
  return Buffer.concat([...parts, list, Buffer.from("PK\x05\x06"), end]);
}

const cell = (value) => (typeof value === "number" ? `<c><v>${value}</v></c>` : `<c t="inlineStr"><is><t>${value}</t></is></c>`);
const sheetXml = (rows) =>
  `<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"><sheetData>` +
  rows.map((row) => `<row>${row.map(cell).join("")}</row>`).join("") +
  `</sheetData></worksheet>`;

const relation = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

/** Of sheets {name, rows, hidden}, the first row of each with the titles. */
export function workbook(sheets) {
  const list = sheets.map(
    ({ name, hidden }, i) => `<sheet name="${name}" sheetId="${i + 1}"${hidden ? ' state="hidden"' : ""} r:id="r${i + 1}"/>`,
  );
  const targets = sheets.map((_, i) => `<Relationship Id="r${i + 1}" Type="${relation}/worksheet" Target="sheet${i + 1}.xml"/>`);
  return zip({
    "_rels/.rels": `<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="r1" Type="${relation}/officeDocument" Target="xl/workbook.xml"/></Relationships>`,
    "xl/workbook.xml": `<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:r="${relation}"><sheets>${list.join("")}</sheets></workbook>`,
    "xl/_rels/workbook.xml.rels": `<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">${targets.join("")}</Relationships>`,
    ...Object.fromEntries(sheets.map(({ rows }, i) => [`xl/sheet${i + 1}.xml`, sheetXml(rows)])),
  });
}
