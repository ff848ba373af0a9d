// Keeps the page with all its files in the browser: from the second visit on they come from there, network or not. A
// newer page has other bytes here, and takes over when the last page of the older one is closed.
declare const FILES: string[];
declare const VERSION: string;

// What is used here of a service worker; its types exclude those of a page.
interface Lasting extends Event { waitUntil(work: Promise<unknown>): void }
interface Fetched extends Lasting { request: Request; respondWith(answer: Promise<Response>): void }
interface Scope {
  registration: { scope: string };
  clients: { claim(): Promise<void> };
  addEventListener(kind: "install" | "activate", heard: (event: Lasting) => void): void;
  addEventListener(kind: "fetch", heard: (event: Fetched) => void): void;
}
const scope = self as unknown as Scope;

const family = `frigana ${scope.registration.scope} `;
const shelf = family + VERSION;

scope.addEventListener("install", (event) => event.waitUntil(
  caches.open(shelf).then((cache) => cache.addAll(FILES.map((file) => new Request(file, { cache: "no-cache" }))))));

scope.addEventListener("activate", (event) => event.waitUntil((async () => {
  for (const name of await caches.keys()) if (name.startsWith(family) && name !== shelf) await caches.delete(name);
  await scope.clients.claim();
})()));

scope.addEventListener("fetch", (event) => {
  const { request } = event;
  if (request.method !== "GET" || !request.url.startsWith(scope.registration.scope)) return;
  event.respondWith((async () => {
    const cache = await caches.open(shelf);
    return await cache.match(request, { ignoreSearch: request.mode === "navigate" }) ?? fetch(request);
  })());
});
