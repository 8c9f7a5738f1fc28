// For the style sheets of pages, which scripts/check-web.sh checks.
module.exports = {
  extends: "stylelint-config-recommended",
  rules: {
    "no-unknown-custom-properties": true,
    // Off: a rule stands with what it is about, and rules for the same element set different properties.
    "no-descending-specificity": null,
  },
};
