// Makes dist/, which is checked in and becomes part of the program. The same sources give the same
// bytes on every machine. Another folder may be named, and behind it "readable": then the code stays
// as long as it is and says where it comes from. Prints the packages of others that are in it.
import { build } from "esbuild";
import { copyFile, mkdir } from "node:fs/promises";

const folder = process.argv[2] ?? "dist";
const isReadable = process.argv[3] === "readable";
await mkdir(folder, { recursive: true });
const { metafile } = await build({
  entryPoints: [
    { in: "src/main.tsx", out: "app" },
    { in: "src/styles/app.css", out: "app" },
  ],
  outdir: folder,
  bundle: true,
  minify: !isReadable,
  sourcemap: isReadable ? "inline" : false,
  format: "esm",
  target: "es2022",
  legalComments: "none",
  metafile: true,
  jsx: "automatic",
  jsxImportSource: "preact",
});
for (const file of ["icon.svg", "index.html"]) {
  await copyFile(`src/${file}`, `${folder}/${file}`);
}

const packageOf = (file) => /node_modules\/((?:@[^/]+\/)?[^/]+)/.exec(file)?.[1];
const packages = new Set(Object.keys(metafile.inputs).map(packageOf).filter(Boolean));
console.log([...packages].sort().join("\n"));
