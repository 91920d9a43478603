import { render } from "preact";
import { App } from "./app.js";
import { start } from "./session.js";

function open(): void {
  void start();
  const place = document.getElementById("app");
  if (place !== null) render(<App />, place);
}

open();
