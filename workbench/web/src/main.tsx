import { render } from "preact";
import { App } from "./app.js";
import { startRoute } from "./route.js";
import { start } from "./session.js";

/** The token of the address is gone before the screen is chosen by it. */
function open(): void {
  void start();
  startRoute();
  const place = document.getElementById("app");
  if (place !== null) render(<App />, place);
}

open();
