// What the compiler does not find. The sources are checked with their types.
import js from "@eslint/js";
import tseslint from "typescript-eslint";

// What sources and servers say stands on the page as text, never as markup.
const asMarkup = /^((inner|outer)HTML|insertAdjacentHTML|write(ln)?|dangerouslySetInnerHTML)$/;
const markup = ["MemberExpression > Identifier.property", "JSXIdentifier", "Property > Identifier.key"].map(
  (place) => ({ selector: `${place}[name=${asMarkup}]`, message: "Show it as text, not as markup." }),
);

export default tseslint.config({
  files: ["src/**/*.{ts,tsx}"],
  extends: [js.configs.recommended, tseslint.configs.strictTypeChecked],
  languageOptions: { parserOptions: { projectService: true } },
  rules: {
    eqeqeq: "error",
    "no-console": "error",
    "no-eval": "error",
    "no-restricted-syntax": ["error", ...markup],
    // A number reads in a text as it should.
    "@typescript-eslint/restrict-template-expressions": ["error", { allowNumber: true }],
    // A handler of an event is shorter without braces, and nobody takes what it returns.
    "@typescript-eslint/no-confusing-void-expression": ["error", { ignoreArrowShorthand: true }],
  },
});
