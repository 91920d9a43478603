// Saves the scene. What that would change in the file is shown first.

import { HoldButton } from "../hold.js";
import { scene } from "../scene.js";
import { brokenAt } from "../session.js";
import { Difference } from "./difference.js";
import { compared, difference, notice, other, save, wishFor, withoutSecrets } from "./files.js";

function Target() {
  const own = scene.value?.file ?? "";
  return (
    <label class="line">
      <span>File</span>
      <input
        type="text"
        name="file"
        spellcheck={false}
        placeholder={own === "" ? "show.scene.json" : own}
        value={other.value}
        onChange={(event) => (other.value = event.currentTarget.value.trim())}
      />
    </label>
  );
}

function Secrets() {
  return (
    <label class="check">
      <input
        type="checkbox"
        checked={withoutSecrets.value}
        onChange={(event) => (withoutSecrets.value = event.currentTarget.checked)}
      />
      Leave passwords and other secrets out
    </label>
  );
}

export function SaveBox() {
  const shown = difference();
  const wish = shown === null ? null : wishFor(shown);
  const hasFile = other.value !== "" || scene.value?.file !== "";
  return (
    <section class="box" aria-label="Save">
      <h2>Save</h2>
      {shown === null ? <p class="quiet">Comparing …</p> : <Difference changes={shown.changes} />}
      <Target />
      <Secrets />
      <div class="line">
        <HoldButton
          label="Save"
          isOff={brokenAt.value !== 0 || wish === null || !hasFile}
          onPress={(held) => wish !== null && void save(wish, held)}
        />
        <p role="status">{notice.value}</p>
      </div>
      {compared.value !== null && other.value !== "" && compared.value.onDisk !== "missing" && (
        <p class="bad">{other.value} is there already; the difference above is against it.</p>
      )}
    </section>
  );
}
