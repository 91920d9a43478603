import { render } from "preact";
import { start } from "./session.js";
import { Wall } from "./wall.js";

const place = document.getElementById("app");
if (place !== null) render(<Wall />, place);
void start();
