// @ts-check
import { make } from "./dom.js";

/**
 * Hands a file to the browser, which keeps it where it keeps downloads.
 * @param {string} name
 * @param {Uint8Array} bytes
 */
export function download(name, bytes) {
  const address = URL.createObjectURL(
    new Blob([new Uint8Array(bytes)], { type: "application/octet-stream" }),
  );
  const link = make("a", { href: address, download: name, hidden: true });
  document.body.append(link);
  link.click();
  link.remove();
  setTimeout(() => URL.revokeObjectURL(address), 60_000);
}
