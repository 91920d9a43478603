// What a list of files does not show.

import type { FileList } from "./shapes.js";
import { counted } from "./words.js";

export function NotListed({ leftOut, endedEarly }: FileList) {
  return (
    <>
      {leftOut > 0 && <p class="quiet">{counted(leftOut, "further file")} not listed.</p>}
      {endedEarly && (
        <p class="bad">The folder is too large to be looked through: there may be files that are not listed.</p>
      )}
    </>
  );
}
