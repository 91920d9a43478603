// Opens another scene of the folder.

import { useEffect, useState } from "preact/hooks";
import { Ask } from "../ask.js";
import { NotListed } from "../filelist.js";
import { isLocked, scene } from "../scene.js";
import { brokenAt } from "../session.js";
import { counted } from "../words.js";
import { files, open, readFiles } from "./files.js";

function File({ file, isChosen, onChoose }: { file: string; isChosen: boolean; onChoose: (file: string) => void }) {
  const isOff = brokenAt.value !== 0 || isLocked.value;
  const isOpen = scene.value?.file === file;
  const choose = (): void => (scene.value?.isSaved === true ? void open(file) : onChoose(file));
  const answer = (isMeant: boolean): void => {
    onChoose("");
    if (isMeant) void open(file);
  };
  return (
    <li>
      <span class="file" title={file}>
        {file}
      </span>
      {isChosen ? (
        <Ask question="Changes are not saved." yes="Open all the same" isOff={isOff} onAnswer={answer} />
      ) : (
        <button class="small" disabled={isOff} onClick={choose}>
          {isOpen ? "Open again" : "Open"}
        </button>
      )}
    </li>
  );
}

/** The scene's own file may lie elsewhere; opening it again takes over what it says now. */
function listed(): string[] {
  const own = scene.value?.file ?? "";
  const all = files.value.files;
  return own === "" || all.includes(own) ? all : [own, ...all];
}

export function OpenBox() {
  const [chosen, choose] = useState("");
  useEffect(() => void readFiles(), []);
  const all = listed();
  return (
    <section class="box" aria-label="Open">
      <header>
        <h2>Open</h2>
        <span class="quiet">{counted(all.length, "scene")}</span>
      </header>
      <ul class="files">
        {all.map((file) => (
          <File key={file} file={file} isChosen={chosen === file} onChoose={choose} />
        ))}
      </ul>
      <NotListed {...files.value} />
    </section>
  );
}
