export default { show(hash) { document.title = hash; } };
