// For the scripts of pages, which scripts/check-web.sh checks.
const { configs } = require("@eslint/js");

module.exports = [
  { ignores: ["build*/"] },
  configs.recommended,
  {
    files: ["tools/**/*.js", "docs/**/*.js"],
    ignores: ["tools/web/**"],
    languageOptions: { sourceType: "script", globals: { document: "readonly", window: "readonly", FormData: "readonly", URLSearchParams: "readonly", addEventListener: "readonly", history: "readonly", location: "readonly" } },
    rules: {
      eqeqeq: "error",
      "no-implicit-globals": "error",
      "no-shadow": "error",
      "no-var": "error",
      "prefer-const": "error",
    },
  },
  {
    // TypeScript knows what a browser has, where tests run theirs.
    files: ["tools/web/**/*.js", "tests/web/page/*.js"],
    languageOptions: { sourceType: "module" },
    rules: {
      eqeqeq: "error",
      "no-shadow": "error",
      "no-undef": "off",
      "no-unused-vars": ["error", { argsIgnorePattern: "^_" }],
      "no-var": "error",
      "prefer-const": "error",
    },
  },
];
