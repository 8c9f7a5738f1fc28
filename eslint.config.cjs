// For the scripts of pages, which scripts/check-web.sh checks.
const { configs } = require("@eslint/js");

module.exports = [
  { ignores: ["build*/"] },
  configs.recommended,
  {
    files: ["tools/**/*.js", "docs/**/*.js"],
    languageOptions: { sourceType: "script", globals: { document: "readonly", window: "readonly", FormData: "readonly", URLSearchParams: "readonly", addEventListener: "readonly", history: "readonly", location: "readonly" } },
    rules: {
      eqeqeq: "error",
      "no-implicit-globals": "error",
      "no-shadow": "error",
      "no-var": "error",
      "prefer-const": "error",
    },
  },
];
