// Counts which of the page's code the tests run, when PAGE_COVERAGE names a folder. A readable build
// of the page stands in it, which browsers get instead of the program's own; what is counted is kept
// beside it. Run by itself, this tells the result.

import { join } from "node:path";
import { fileURLToPath } from "node:url";

const folder = process.env.PAGE_COVERAGE;
const enough = 90; // per cent of the lines

async function report() {
  const { CoverageReport } = await import("monocart-coverage-reports");
  return new CoverageReport({
    outputDir: join(folder, "report"),
    cleanCache: false, // each test file adds to it
    sourceFilter: (path) => !path.includes("node_modules"),
    reports: [["console-details", { metrics: ["lines"] }]],
    logging: "error",
  });
}

/** Before a window has its first page. */
export async function prepareCounting(context) {
  if (folder === undefined) return;
  await context.route("**/app.js", (route) =>
    route.fulfill({ path: join(folder, "app.js"), contentType: "text/javascript" }),
  );
}

export async function beginCounting(page) {
  if (folder !== undefined) await page.coverage.startJSCoverage({ resetOnNavigation: false });
}

/** Of pages that are still open. */
export async function endCounting(pages) {
  if (folder === undefined) return;
  for (const page of pages) {
    const counted = await page.coverage.stopJSCoverage();
    if (counted.length > 0) await (await report()).add(counted);
  }
}

/** Prints the lines that ran, file by file and together. */
async function tell() {
  const { summary } = await (await report()).generate();
  const { covered, total, pct } = summary.lines;
  console.log(`page ${pct} % (${covered} of ${total} lines)`);
  process.exitCode = pct < enough ? 1 : 0;
}

if (process.argv[1] === fileURLToPath(import.meta.url)) await tell();
