// Settings that are not live yet.

import { brokenAt } from "../session.js";
import { details, discardDraft, notice } from "./settings.js";

async function discard(name: string): Promise<void> {
  notice.value = await discardDraft(name);
}

export function DraftWords({ name }: { name: string }) {
  if (details.value?.isDraft !== true) return null;
  return (
    <p class="draft-words">
      <strong class="draft">draft</strong>
      <span>These settings are not live. Load to store takes them over; until then loads go on as before.</span>
      <button class="small" disabled={brokenAt.value !== 0} onClick={() => void discard(name)}>
        Discard the draft
      </button>
    </p>
  );
}
